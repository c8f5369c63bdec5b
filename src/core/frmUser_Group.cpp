#include "core/frmUser_Group.h"

#include "core/AddEdit.h"
#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace core {

namespace {

/// The display name of the one who may do everything and belongs to no group.
const QString administrator = QStringLiteral("Administrator");

QString number(qint64 n) {
    return QString::number(n);
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

frmUser_Group::frmUser_Group()
    : Form(QString::fromLatin1(formName), QStringLiteral("Security Setup")) {
    auto* layout = new QVBoxLayout(this);
    SSTab1 = screen::named(new QTabWidget(this), QStringLiteral("SSTab1"));
    layout->addWidget(SSTab1, 1);
    buildUserTab(screen::tab(SSTab1, QStringLiteral("User Security Options")));
    buildGroupTab(screen::tab(SSTab1, QStringLiteral("Group Security Options")));

    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    on(cmdClose, [this] { unload(); });
    setCancelButton(cmdClose);
    // What one tab changed shows on the other.
    connect(SSTab1, &QTabWidget::currentChanged, this, [this](int page) {
        guarded([this, page] { page == 0 ? cboUsers_Click() : cboGroups_Click(); });
    });
}

void frmUser_Group::buildUserTab(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    screen::Fields fields(page, top);
    cboUsers = fields.listCombo(QStringLiteral("cboUsers"), QStringLiteral("&User:"));
    cboUsers->setMinimumContentsLength(32);
    auto* buttons = new QHBoxLayout;
    top->addLayout(buttons);
    const auto button = [&](const QString& name, const QString& caption) {
        auto* made = screen::named(new QPushButton(caption, page), name);
        made->setAutoDefault(false);
        buttons->addWidget(made);
        return made;
    };
    cmdUnew = button(QStringLiteral("cmdUnew"), QStringLiteral("&New..."));
    cmdUedit = button(QStringLiteral("cmdUedit"), QStringLiteral("&Edit..."));
    cmdUdelete = button(QStringLiteral("cmdUdelete"), QStringLiteral("&Delete"));
    top->addStretch(1);
    screen::Fields group(page, layout);
    cboUserGroup = group.listCombo(QStringLiteral("cboUserGroup"), QStringLiteral("&Group:"));
    cboUserGroup->setMinimumContentsLength(32);
    group.grid()->setColumnStretch(2, 1);
    ListUserObjects =
        checkList(page, layout, QStringLiteral("ListUserObjects"),
                  QStringLiteral("This user &may use:"), QStringLiteral("This user may use"));

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
    cboGroups = fields.listCombo(QStringLiteral("cboGroups"), QStringLiteral("&Group:"));
    cboGroups->setMinimumContentsLength(32);
    auto* buttons = new QHBoxLayout;
    top->addLayout(buttons);
    const auto button = [&](const QString& name, const QString& caption) {
        auto* made = screen::named(new QPushButton(caption, page), name);
        made->setAutoDefault(false);
        buttons->addWidget(made);
        return made;
    };
    cmdGnew = button(QStringLiteral("cmdGnew"), QStringLiteral("&New..."));
    cmdGedit = button(QStringLiteral("cmdGedit"), QStringLiteral("&Edit..."));
    cmdGdelete = button(QStringLiteral("cmdGdelete"), QStringLiteral("&Delete"));
    top->addStretch(1);
    auto* lists = new QHBoxLayout;
    layout->addLayout(lists, 1);
    ListGroupObjects =
        checkList(page, lists, QStringLiteral("ListGroupObjects"),
                  QStringLiteral("This group &may use:"), QStringLiteral("This group may use"));
    ListUsers = checkList(page, lists, QStringLiteral("ListUsers"), QStringLiteral("&Users in it:"),
                          QStringLiteral("Users in it"));

    on(cboGroups->chosen, &frmUser_Group::cboGroups_Click);
    on(ListGroupObjects->click, &frmUser_Group::ListGroupObjects_Click);
    on(ListUsers->itemCheck, &frmUser_Group::ListUsers_ItemCheck);
    on(cmdGnew, &frmUser_Group::cmdGnew_Click);
    on(cmdGedit, &frmUser_Group::cmdGedit_Click);
    on(cmdGdelete, &frmUser_Group::cmdGdelete_Click);
}

void frmUser_Group::Form_Load() {
    jet::Recordset users = snapshot(QStringLiteral("SELECT * FROM users"));
    if (users.isEmpty()) {
        MainDatabase().execute(QStringLiteral("INSERT INTO users (userid, username, password)"
                                              " VALUES('Admin','Administrator','Bolts')"));
        users.requery();
    }
    for (; !users.eof(); users.moveNext()) {
        cboUsers->addRow(users.text(u"username"), users[u"id"].toLong());
        ListUsers->addRow(users.text(u"username"), users[u"id"].toLong());
    }
    cboUserGroup->addRow(QString());
    jet::Recordset groups = snapshot(QStringLiteral("SELECT * FROM groups"));
    for (; !groups.eof(); groups.moveNext()) {
        cboGroups->addRow(groups.text(u"groupname"), groups[u"groupid"].toLong());
        cboUserGroup->addRow(groups.text(u"groupname"), groups[u"groupid"].toLong());
    }
    cboUsers->setCurrentIndex(0);
    cboGroups->setCurrentIndex(cboGroups->count() > 0 ? 0 : -1);
    cboUsers_Click();
    cboGroups_Click();
}

void frmUser_Group::fillObjects(controls::CheckList* list, const QString& grants) const {
    jet::Recordset granted = snapshot(grants);
    jet::Recordset objects =
        snapshot(QStringLiteral("SELECT * FROM securityobjects ORDER BY displayorder"));
    const int row = list->currentRow();
    list->clearRows();
    for (; !objects.eof(); objects.moveNext()) {
        bool ticked = false;
        if (!granted.isEmpty()) {
            granted.findFirst(QStringLiteral("objectid=") + objects.text(u"objectid"));
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
    const QString user = number(cboUsers->itemNumber());
    fillObjects(ListUserObjects, QStringLiteral("SELECT * FROM securityusers WHERE id=") + user);
    const jet::Value group =
        MainDatabase().lookup(QStringLiteral("SELECT usergroupid FROM users WHERE ID = ") + user);
    // A group that was deleted is none of the list.
    if (!cboUserGroup->chooseNumber(group.isNull() ? 0 : group.toLong()))
        cboUserGroup->clear();
}

void frmUser_Group::ListUserObjects_ItemCheck(int row) {
    const QString user = number(cboUsers->itemNumber());
    const QString object = number(ListUserObjects->itemNumber(row));
    if (ListUserObjects->isTicked(row))
        MainDatabase().execute(QStringLiteral("INSERT INTO securityusers (id, objectID) VALUES(") +
                               user + u',' + object + u')');
    else
        MainDatabase().execute(QStringLiteral("DELETE FROM securityusers WHERE id=") + user +
                               QStringLiteral(" AND objectID=") + object);
}

void frmUser_Group::setGroupOf(qint64 user, qint64 group) {
    MainDatabase().execute(QStringLiteral("UPDATE users set usergroupid=") + number(group) +
                           QStringLiteral(" WHERE id=") + number(user));
}

void frmUser_Group::cboUserGroup_Click() {
    setGroupOf(cboUsers->itemNumber(), cboUserGroup->itemNumber());
}

void frmUser_Group::cmdUnew_Click() {
    if (!screen::Forms::dialog<AddEditDialog>(QStringLiteral("frmUserAddEdit"))
             ->ShowForm(QStringLiteral("New"), 0))
        return;
    jet::Recordset users = snapshot(QStringLiteral("SELECT * FROM users ORDER BY id"));
    for (; !users.eof(); users.moveNext()) {
        const qint64 key = users[u"id"].toLong();
        if (cboUsers->findData(key) >= 0)
            continue;
        cboUsers->addRow(users.text(u"username"), key);
        ListUsers->addRow(users.text(u"username"), key);
    }
    cboUsers->setCurrentIndex(cboUsers->count() - 1);
    cboUsers_Click();
}

void frmUser_Group::cmdUedit_Click() {
    const qint64 user = cboUsers->itemNumber();
    if (!screen::Forms::dialog<AddEditDialog>(QStringLiteral("frmUserAddEdit"))
             ->ShowForm(QStringLiteral("Edit"), user))
        return;
    const jet::Recordset row =
        snapshot(QStringLiteral("SELECT * FROM users WHERE id=") + number(user));
    if (row.isEmpty())
        return;
    renameRow(cboUsers, user, row.text(u"username"));
    const int member = ListUsers->findNumber(user);
    if (member >= 0)
        ListUsers->setItemText(member, row.text(u"username"));
    cboUsers_Click();
}

void frmUser_Group::cmdUdelete_Click() {
    if (screen::MsgBox(QStringLiteral("Are you sure you want to delete this user?"),
                       screen::Buttons::YesNo, screen::Icon::Question,
                       QStringLiteral("Delete User")) != screen::Answer::Yes)
        return;
    const qint64 user = cboUsers->itemNumber();
    jet::Transaction change(MainDatabase());
    MainDatabase().execute(QStringLiteral("DELETE * FROM users WHERE id=") + number(user));
    MainDatabase().execute(QStringLiteral("DELETE * FROM securityusers WHERE id=") + number(user));
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
    fillObjects(ListGroupObjects,
                QStringLiteral("SELECT * FROM securitygroups WHERE groupid=") + number(group));
    ListUsers->clearRows();
    jet::Recordset users = snapshot(QStringLiteral("SELECT * FROM users ORDER BY username"));
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
    const QString grant = QStringLiteral(" FROM securitygroups WHERE groupid=") + group +
                          QStringLiteral(" AND objectID=") + object;
    // A click that only chooses the row leaves its grant as it is.
    const bool granted = MainDatabase().hasRows(QStringLiteral("SELECT *") + grant);
    if (ListGroupObjects->isTicked(row) && !granted)
        MainDatabase().execute(
            QStringLiteral("INSERT INTO securitygroups (groupid, objectID) VALUES(") + group +
            u',' + object + u')');
    else if (!ListGroupObjects->isTicked(row) && granted)
        MainDatabase().execute(QStringLiteral("DELETE") + grant);
}

void frmUser_Group::ListUsers_ItemCheck(int row) {
    if (ListUsers->itemText(row) == administrator) {
        ListUsers->setTicked(row, false);
        return;
    }
    setGroupOf(ListUsers->itemNumber(row), ListUsers->isTicked(row) ? cboGroups->itemNumber() : 0);
}

void frmUser_Group::cmdGnew_Click() {
    if (!screen::Forms::dialog<AddEditDialog>(QStringLiteral("frmGroupAddEdit"))
             ->ShowForm(QStringLiteral("New"), 0))
        return;
    jet::Recordset groups = snapshot(QStringLiteral("SELECT * FROM groups ORDER BY groupid"));
    for (; !groups.eof(); groups.moveNext()) {
        const qint64 key = groups[u"groupid"].toLong();
        if (cboGroups->findData(key) >= 0)
            continue;
        cboGroups->addRow(groups.text(u"groupname"), key);
        cboUserGroup->addRow(groups.text(u"groupname"), key);
    }
    cboGroups->setCurrentIndex(cboGroups->count() - 1);
    cboGroups_Click();
}

void frmUser_Group::cmdGedit_Click() {
    const qint64 group = cboGroups->itemNumber();
    if (!screen::Forms::dialog<AddEditDialog>(QStringLiteral("frmGroupAddEdit"))
             ->ShowForm(QStringLiteral("Edit"), group))
        return;
    const jet::Recordset row =
        snapshot(QStringLiteral("SELECT * FROM groups WHERE groupid=") + number(group));
    if (row.isEmpty())
        return;
    renameRow(cboGroups, group, row.text(u"groupname"));
    renameRow(cboUserGroup, group, row.text(u"groupname"));
}

void frmUser_Group::cmdGdelete_Click() {
    const qint64 group = cboGroups->itemNumber();
    const bool used = MainDatabase().hasRows(
        QStringLiteral("SELECT * FROM users WHERE usergroupid=") + number(group));
    const QString question =
        used ? QStringLiteral("This group is assigned to one or more users. If you delete this, "
                              "those users \rmay not be able to access the system. Are you sure "
                              "you want to delete it?")
             : QStringLiteral("Are you sure you want to delete this group?");
    if (screen::MsgBox(question, screen::Buttons::YesNo, screen::Icon::Question,
                       QStringLiteral("Delete Group")) != screen::Answer::Yes)
        return;
    // The members keep the group's number, which grants nothing any more.
    jet::Transaction change(MainDatabase());
    MainDatabase().execute(QStringLiteral("DELETE * FROM groups WHERE groupid=") + number(group));
    MainDatabase().execute(QStringLiteral("DELETE * FROM securitygroups WHERE groupid=") +
                           number(group));
    change.commit();
    removeRow(cboGroups, group);
    removeRow(cboUserGroup, group);
    cboGroups->setCurrentIndex(cboGroups->count() - 1);
    cboGroups_Click();
}

} // namespace core
