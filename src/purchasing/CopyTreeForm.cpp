#include "purchasing/CopyTreeForm.h"

#include "core/MirsaMain.h"
#include "platform/controls/DateField.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace purchasing {

namespace {

constexpr int keyRole = Qt::UserRole;
constexpr int chosenRole = Qt::UserRole + 1;

QIcon light(bool green) {
    QPixmap picture(32, 32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x404040), 2));
    painter.setBrush(green ? QColor(0x2e9e44) : QColor(0xc02020));
    painter.drawEllipse(5, 5, 22, 22);
    painter.end();
    return QIcon(picture);
}

} // namespace

CopyTreeForm::CopyTreeForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.caption), m_descriptor(std::move(descriptor)) {
    auto* outside = new QVBoxLayout(this);
    tvMain = screen::named(new QTreeWidget(this), u"tvMain"_s, u"Items to copy"_s);
    tvMain->setHeaderHidden(true);
    tvMain->installEventFilter(this);
    outside->addWidget(tvMain, 1);
    if (m_descriptor.asksDate) {
        screen::Fields fields(this, outside);
        txtDate = fields.date(u"txtDate"_s, u"Date &Required:"_s);
        fields.grid()->setColumnStretch(2, 1);
    }
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(u"cmdSelect"_s, u"&OK"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(cmdSelect);
    setCancelButton(cmdCancel);
    on(cmdSelect, [this] {
        if (txtDate && !txtDate->isValid()) {
            complain(u"This is not a date. Please enter it as month/day/year."_s, txtDate);
            return;
        }
        m_ok = true;
        hideModal();
    });
    on(cmdCancel, [this] { hideModal(); });
    connect(tvMain, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { flip(item); });
    resize(480, 460);
}

void CopyTreeForm::fill(qint64 number, const QString& key) {
    jet::Database& database = core::MainDatabase();
    const QString no = QString::number(number);
    const auto read = [&](const QString& select) {
        return database.openRecordset(select, jet::RecordsetType::Snapshot);
    };
    const QString table = m_descriptor.ordered ? u"POVendor"_s : u"RFQVendor"_s;
    jet::Recordset vendors =
        read(u"SELECT VendorID, Company, "_s +
             (m_descriptor.ordered ? u"OrderNumber"_s : u"VOrderKey"_s) + u" FROM "_s + table +
             (m_descriptor.oneVendor ? u" WHERE VOrderKey = "_s + sqlText(key)
                                     : u" WHERE OrderNumber = "_s + no) +
             u" ORDER BY Company"_s);
    const QString owner = m_descriptor.ordered ? u"PONumber"_s : u"VOrderKey"_s;
    jet::Recordset items =
        read(u"SELECT ItemKey, PartNumber, Description, "_s + owner + u" FROM "_s +
             (m_descriptor.ordered     ? u"POItem WHERE PONumber = "_s + no
              : m_descriptor.oneVendor ? u"RFQItem WHERE VOrderKey = "_s + sqlText(key)
                                       : u"RFQItem WHERE OrderNumber = "_s + no) +
             u" ORDER BY ItemNumber"_s);

    auto* root = new QTreeWidgetItem(tvMain, {m_descriptor.rootWord + no});
    root->setData(0, keyRole, u"r"_s + no);
    std::vector<std::pair<QString, QTreeWidgetItem*>> folders;
    for (; !vendors.eof(); vendors.moveNext()) {
        const QString vendor = vendors.field(2).toText();
        auto* node = new QTreeWidgetItem(root, {vendors.text(u"Company")});
        node->setData(0, keyRole, u"v"_s + vendor);
        folders.emplace_back(vendor, node);
    }
    for (; !items.eof(); items.moveNext()) {
        const QString of = items.text(owner);
        for (const auto& [vendor, node] : folders) {
            if (vendor.compare(of, Qt::CaseInsensitive) != 0)
                continue;
            auto* item = new QTreeWidgetItem(
                node, {items.text(u"PartNumber") + u" - "_s + items.text(u"Description")});
            item->setData(0, keyRole, u"i"_s + items.text(u"ItemKey"));
            flip(item);
        }
    }
    tvMain->expandAll();
    root->setIcon(0, style()->standardIcon(QStyle::SP_DirOpenIcon));
    for (const auto& folder : folders)
        showFolder(folder.second);
    tvMain->setCurrentItem(root);
}

bool CopyTreeForm::isChosen(const QTreeWidgetItem* item) const {
    return item->data(0, chosenRole).toBool();
}

// Folders are passed over.
void CopyTreeForm::flip(QTreeWidgetItem* item) {
    if (!item || !item->data(0, keyRole).toString().startsWith(u'i'))
        return;
    const bool chosen = !isChosen(item);
    item->setData(0, chosenRole, chosen);
    item->setIcon(0, light(chosen));
    item->setData(0, Qt::AccessibleTextRole,
                  item->text(0) + (chosen ? u", chosen"_s : u", left out"_s));
    showFolder(item->parent());
}

void CopyTreeForm::showFolder(QTreeWidgetItem* vendor) const {
    bool any = false;
    for (int i = 0; i < vendor->childCount(); ++i)
        any = any || isChosen(vendor->child(i));
    vendor->setIcon(0,
                    style()->standardIcon(any ? QStyle::SP_DirOpenIcon : QStyle::SP_DirClosedIcon));
}

bool CopyTreeForm::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress && object == tvMain &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        flip(tvMain->currentItem());
        return true;
    }
    return Form::eventFilter(object, event);
}

std::optional<CopyTreeDialog::Choice> CopyTreeForm::choose(qint64 number, const QString& key) {
    fill(number, key);
    if (txtDate)
        txtDate->setDate(values::today());
    showModal();
    if (!m_ok)
        return std::nullopt;
    Choice choice;
    const QTreeWidgetItem* root = tvMain->topLevelItem(0);
    for (int v = 0; v < root->childCount(); ++v) {
        const QTreeWidgetItem* vendor = root->child(v);
        ChosenRequest request{vendor->data(0, keyRole).toString().mid(1), {}};
        for (int i = 0; i < vendor->childCount(); ++i) {
            if (isChosen(vendor->child(i)))
                request.items << vendor->child(i)->data(0, keyRole).toString().mid(1);
        }
        choice.vendors.push_back(std::move(request));
    }
    choice.required = txtDate ? txtDate->date().value_or(QDate()) : QDate();
    return choice;
}

} // namespace purchasing
