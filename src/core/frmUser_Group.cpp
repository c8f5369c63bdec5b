#include "core/frmUser_Group.h"

#include "core/AddEdit.h"
#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace core {

namespace {

/// The display name of the one who may do everything and belongs to no group.
const QString administrator = u"Administrator"_s;

QString number(qint64 n) {
    return QString::number(n);
}

const QString objectsSelect = u"SELECT * FROM securityobjects ORDER BY displayorder"_s;
const QString membersSelect = u"SELECT * FROM users ORDER BY username"_s;

QString grantsOfUser(qint64 user) {
    return u"SELECT * FROM securityusers WHERE id="_s + number(user);
}

QString grantsOfGroup(qint64 group) {
    return u"SELECT * FROM securitygroups WHERE groupid="_s + number(group);
}

QString groupOfUser(qint64 user) {
    return u"SELECT usergroupid FROM users WHERE ID = "_s + number(user);
}

jet::Recordset snapshot(const QString& select) {
    return MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
}

controls::CheckList* checkList(QWidget* page, QBoxLayout* inside, const QString& name,
                               const QString& label, const QString& spoken) {
    auto* column = new QVBoxLayout;
    inside->addLayout(column, 1);
    auto* caption = new QLabel(label, page);
    auto* list = screen::named(new controls::CheckList(page), name, spoken);
    list->setMinimumSize(280, 320);
    caption->setBuddy(list);
    column->addWidget(caption);
    column->addWidget(list, 1);
    return list;
}

void renameRow(controls::ListCombo* combo, qint64 key, const QString& text) {
    const int row = combo->findData(key);
    if (row >= 0)
        combo->setItemText(row, text);
}

void removeRow(controls::ListCombo* combo, qint64 key) {
    const int row = combo->findData(key);
    if (row >= 0)
        combo->removeItem(row);
}

} // namespace

frmUser_Group::frmUser_Group() : Form(QString::fromLatin1(formName), u"Security Setup"_s) {
    auto* layout = new QVBoxLayout(this);
    SSTab1 = screen::named(new QTabWidget(this), u"SSTab1"_s);
    layout->addWidget(SSTab1, 1);
    buildUserTab(screen::tab(SSTab1, u"User Security Options"_s));
    buildGroupTab(screen::tab(SSTab1, u"Group Security Options"_s));

    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    on(cmdClose, [this] { unload(); });
    setCancelButton(cmdClose);
    // What one tab changed shows on the other.
    on(SSTab1, &QTabWidget::currentChanged,
       [this](int page) { page == 0 ? cboUsers_Click() : cboGroups_Click(); });
}

void frmUser_Group::buildUserTab(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    screen::Fields fields(page, top);
    cboUsers = fields.listCombo(u"cboUsers"_s, u"&User:"_s);
    cboUsers->setMinimumContentsLength(32);
    auto* buttons = new QHBoxLayout;
    top->addLayout(buttons);
    const auto button = [&](const QString& name, const QString& caption) {
        auto* made = screen::named(new QPushButton(caption, page), name);
        made->setAutoDefault(false);
        buttons->addWidget(made);
        return made;
    };
    cmdUnew = button(u"cmdUnew"_s, u"&New..."_s);
    cmdUedit = button(u"cmdUedit"_s, u"&Edit..."_s);
    cmdUdelete = button(u"cmdUdelete"_s, u"&Delete"_s);
    top->addStretch(1);
    screen::Fields group(page, layout);
    cboUserGroup = group.listCombo(u"cboUserGroup"_s, u"&Group:"_s);
    cboUserGroup->setMinimumContentsLength(32);
    group.grid()->setColumnStretch(2, 1);
    ListUserObjects = checkList(page, layout, u"ListUserObjects"_s, u"This user &may use:"_s,
                                u"This user may use"_s);

    on(cboUsers->chosen, &frmUser_Group::cboUsers_Click);
    on(cboUserGroup->chosen, &frmUser_Group::cboUserGroup_Click);
    on(ListUserObjects->itemCheck, &frmUser_Group::ListUserObjects_ItemCheck);
    on(cmdUnew, &frmUser_Group::cmdUnew_Click);
    on(cmdUedit, &frmUser_Group::cmdUedit_Click);
    on(cmdUdelete, &frmUser_Group::cmdUdelete_Click);
}

void frmUser_Group::buildGroupTab(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    screen::Fields fields(page, top);
    cboGroups = fields.listCombo(u"cboGroups"_s, u"&Group:"_s);
    cboGroups->setMinimumContentsLength(32);
    auto* buttons = new QHBoxLayout;
    top->addLayout(buttons);
    const auto button = [&](const QString& name, const QString& caption) {
        auto* made = screen::named(new QPushButton(caption, page), name);
        made->setAutoDefault(false);
        buttons->addWidget(made);
        return made;
    };
    cmdGnew = button(u"cmdGnew"_s, u"&New..."_s);
    cmdGedit = button(u"cmdGedit"_s, u"&Edit..."_s);
    cmdGdelete = button(u"cmdGdelete"_s, u"&Delete"_s);
    top->addStretch(1);
    auto* lists = new QHBoxLayout;
    layout->addLayout(lists, 1);
    ListGroupObjects = checkList(page, lists, u"ListGroupObjects"_s, u"This group &may use:"_s,
                                 u"This group may use"_s);
    ListUsers = checkList(page, lists, u"ListUsers"_s, u"&Users in it:"_s, u"Users in it"_s);

    on(cboGroups->chosen, &frmUser_Group::cboGroups_Click);
    on(ListGroupObjects->click, &frmUser_Group::ListGroupObjects_Click);
    on(ListUsers->itemCheck, &frmUser_Group::ListUsers_ItemCheck);
    on(cmdGnew, &frmUser_Group::cmdGnew_Click);
    on(cmdGedit, &frmUser_Group::cmdGedit_Click);
    on(cmdGdelete, &frmUser_Group::cmdGdelete_Click);
}

void frmUser_Group::Form_Load() {
    MainDatabase().expect({u"SELECT * FROM users"_s, u"SELECT * FROM groups"_s, objectsSelect});
    m_objects = snapshot(objectsSelect);
    jet::Recordset groups = snapshot(u"SELECT * FROM groups"_s);
    jet::Recordset users = snapshot(u"SELECT * FROM users"_s);
    if (users.isEmpty()) {
        MainDatabase().execute(u"INSERT INTO users (userid, username, password)"
                               " VALUES('Admin','Administrator','Bolts')"_s);
        users.requery();
    }
    for (; !users.eof(); users.moveNext()) {
        cboUsers->addRow(users.text(u"username"), users[u"id"].toLong());
        ListUsers->addRow(users.text(u"username"), users[u"id"].toLong());
    }
    cboUserGroup->addRow(QString());
    for (; !groups.eof(); groups.moveNext()) {
        cboGroups->addRow(groups.text(u"groupname"), groups[u"groupid"].toLong());
        cboUserGroup->addRow(groups.text(u"groupname"), groups[u"groupid"].toLong());
    }
    cboUsers->setCurrentIndex(0);
    cboGroups->setCurrentIndex(cboGroups->count() > 0 ? 0 : -1);
    const qint64 user = cboUsers->itemNumber();
    MainDatabase().expect({grantsOfUser(user), groupOfUser(user),
                           grantsOfGroup(cboGroups->itemNumber()), membersSelect});
    cboUsers_Click();
    cboGroups_Click();
}

void frmUser_Group::fillObjects(controls::CheckList* list, const QString& grants) const {
    jet::Recordset granted = snapshot(grants);
    jet::Recordset objects = m_objects;
    if (!objects.isEmpty())
        objects.moveFirst();
    const int row = list->currentRow();
    list->clearRows();
    for (; !objects.eof(); objects.moveNext()) {
        bool ticked = false;
        if (!granted.isEmpty()) {
            granted.findFirst(u"objectid="_s + objects.text(u"objectid"));
            ticked = !granted.noMatch();
        }
        list->addRow(objects.text(u"objectname"), objects[u"objectid"].toLong(), ticked);
    }
    list->setCurrentRow(row);
}

void frmUser_Group::enableUserControls() {
    const bool any = cboUsers->count() > 0;
    const bool changeable = any && cboUsers->currentText() != administrator;
    cboUsers->setEnabled(any);
    cmdUedit->setEnabled(any);
    ListUserObjects->setEnabled(changeable);
    cboUserGroup->setEnabled(changeable);
    cmdUdelete->setEnabled(changeable);
}

void frmUser_Group::enableGroupControls() {
    const bool any = cboGroups->count() > 0;
    cboGroups->setEnabled(any);
    cmdGedit->setEnabled(any);
    cmdGdelete->setEnabled(any);
    ListGroupObjects->setEnabled(any);
    ListUsers->setEnabled(any);
}

void frmUser_Group::cboUsers_Click() {
    enableUserControls();
    const qint64 user = cboUsers->itemNumber();
    fillObjects(ListUserObjects, grantsOfUser(user));
    const jet::Value group = MainDatabase().lookup(groupOfUser(user));
    // A group that was deleted is none of the list.
    if (!cboUserGroup->chooseNumber(group.isNull() ? 0 : group.toLong()))
        cboUserGroup->clear();
}

void frmUser_Group::ListUserObjects_ItemCheck(int row) {
    const QString user = number(cboUsers->itemNumber());
    const QString object = number(ListUserObjects->itemNumber(row));
    if (ListUserObjects->isTicked(row))
        MainDatabase().execute(u"INSERT INTO securityusers (id, objectID) VALUES("_s + user + u',' +
                               object + u')');
    else
        MainDatabase().execute(u"DELETE FROM securityusers WHERE id="_s + user +
                               u" AND objectID="_s + object);
}

void frmUser_Group::setGroupOf(qint64 user, qint64 group) {
    MainDatabase().execute(u"UPDATE users set usergroupid="_s + number(group) + u" WHERE id="_s +
                           number(user));
}

namespace {

/// Puts the rows (number, name) that a list lacks into it and into a second one; the last is then
/// the chosen one.
template <class List>
void addNew(jet::Recordset rows, controls::ListCombo& list, List& second) {
    for (; !rows.eof(); rows.moveNext()) {
        const qint64 key = rows.field(0).toLong();
        if (list.findData(key) >= 0)
            continue;
        list.addRow(rows.field(1).toText(), key);
        second.addRow(rows.field(1).toText(), key);
    }
    list.setCurrentIndex(list.count() - 1);
}

} // namespace

void frmUser_Group::cboUserGroup_Click() {
    setGroupOf(cboUsers->itemNumber(), cboUserGroup->itemNumber());
}

void frmUser_Group::cmdUnew_Click() {
    if (!screen::Forms::dialog<AddEditDialog>(u"frmUserAddEdit"_s)->ShowForm(u"New"_s, 0))
        return;
    addNew(snapshot(u"SELECT id, username FROM users ORDER BY id"_s), *cboUsers, *ListUsers);
    cboUsers_Click();
}

void frmUser_Group::cmdUedit_Click() {
    const qint64 user = cboUsers->itemNumber();
    if (!screen::Forms::dialog<AddEditDialog>(u"frmUserAddEdit"_s)->ShowForm(u"Edit"_s, user))
        return;
    const jet::Recordset row = snapshot(u"SELECT * FROM users WHERE id="_s + number(user));
    if (row.isEmpty())
        return;
    renameRow(cboUsers, user, row.text(u"username"));
    const int member = ListUsers->findNumber(user);
    if (member >= 0)
        ListUsers->setItemText(member, row.text(u"username"));
    cboUsers_Click();
}

void frmUser_Group::cmdUdelete_Click() {
    if (!screen::confirmDeletion(u"Are you sure you want to delete this user?"_s, u"Delete User"_s))
        return;
    const qint64 user = cboUsers->itemNumber();
    jet::Transaction change(MainDatabase());
    MainDatabase().execute(u"DELETE * FROM users WHERE id="_s + number(user));
    MainDatabase().execute(u"DELETE * FROM securityusers WHERE id="_s + number(user));
    change.commit();
    removeRow(cboUsers, user);
    const int member = ListUsers->findNumber(user);
    if (member >= 0)
        ListUsers->removeRow(member);
    cboUsers->setCurrentIndex(cboUsers->count() - 1);
    cboUsers_Click();
}

void frmUser_Group::cboGroups_Click() {
    enableGroupControls();
    const qint64 group = cboGroups->itemNumber();
    fillObjects(ListGroupObjects, grantsOfGroup(group));
    ListUsers->clearRows();
    jet::Recordset users = snapshot(membersSelect);
    for (; !users.eof(); users.moveNext()) {
        const bool member = group != 0 && users[u"usergroupid"].toLong() == group;
        ListUsers->addRow(users.text(u"username"), users[u"id"].toLong(), member);
    }
    const int row = ListUsers->findRow(administrator);
    if (row >= 0)
        ListUsers->removeRow(row);
}

void frmUser_Group::ListGroupObjects_Click() {
    const int row = ListGroupObjects->currentRow();
    if (row < 0)
        return;
    const QString group = number(cboGroups->itemNumber());
    const QString object = number(ListGroupObjects->itemNumber(row));
    const QString grant =
        u" FROM securitygroups WHERE groupid="_s + group + u" AND objectID="_s + object;
    // A click that only chooses the row leaves its grant as it is.
    const bool granted = MainDatabase().hasRows(u"SELECT *"_s + grant);
    if (ListGroupObjects->isTicked(row) && !granted)
        MainDatabase().execute(u"INSERT INTO securitygroups (groupid, objectID) VALUES("_s + group +
                               u',' + object + u')');
    else if (!ListGroupObjects->isTicked(row) && granted)
        MainDatabase().execute(u"DELETE"_s + grant);
}

void frmUser_Group::ListUsers_ItemCheck(int row) {
    if (ListUsers->itemText(row) == administrator) {
        ListUsers->setTicked(row, false);
        return;
    }
    setGroupOf(ListUsers->itemNumber(row), ListUsers->isTicked(row) ? cboGroups->itemNumber() : 0);
}

void frmUser_Group::cmdGnew_Click() {
    if (!screen::Forms::dialog<AddEditDialog>(u"frmGroupAddEdit"_s)->ShowForm(u"New"_s, 0))
        return;
    addNew(snapshot(u"SELECT groupid, groupname FROM groups ORDER BY groupid"_s), *cboGroups,
           *cboUserGroup);
    cboGroups_Click();
}

void frmUser_Group::cmdGedit_Click() {
    const qint64 group = cboGroups->itemNumber();
    if (!screen::Forms::dialog<AddEditDialog>(u"frmGroupAddEdit"_s)->ShowForm(u"Edit"_s, group))
        return;
    const jet::Recordset row = snapshot(u"SELECT * FROM groups WHERE groupid="_s + number(group));
    if (row.isEmpty())
        return;
    renameRow(cboGroups, group, row.text(u"groupname"));
    renameRow(cboUserGroup, group, row.text(u"groupname"));
}

void frmUser_Group::cmdGdelete_Click() {
    const qint64 group = cboGroups->itemNumber();
    const bool used =
        MainDatabase().hasRows(u"SELECT * FROM users WHERE usergroupid="_s + number(group));
    const QString question =
        used ? u"This group is assigned to one or more users. If you delete this, "
               "those users \rmay not be able to access the system. Are you sure "
               "you want to delete it?"_s
             : u"Are you sure you want to delete this group?"_s;
    if (!screen::confirmDeletion(question, u"Delete Group"_s))
        return;
    // The members keep the group's number, which grants nothing any more.
    jet::Transaction change(MainDatabase());
    MainDatabase().execute(u"DELETE * FROM groups WHERE groupid="_s + number(group));
    MainDatabase().execute(u"DELETE * FROM securitygroups WHERE groupid="_s + number(group));
    change.commit();
    removeRow(cboGroups, group);
    removeRow(cboUserGroup, group);
    cboGroups->setCurrentIndex(cboGroups->count() - 1);
    cboGroups_Click();
}

} // namespace core
