#include "core/records/LinedModule.h"
#include "platform/screen/Forms.h"
#include "support/ShopFixture.h"

#include <QCheckBox>
#include <QVBoxLayout>

using screen::Answer;

namespace {

// A made-up document: a header with its own copy of a vendor, and items that two grids show.

struct Item {
    qint64 id = 0;
    QString partNo, notes;
    qint64 quantity = 0;
    values::Currency price;
};

struct Tender {
    QString title;
    bool active = true;
    qint64 vendorId = 0;
    QString company, terms;
    values::Currency total;
};

const core::DocumentColumns<Tender>& tenderColumns() {
    using core::column;
    static const core::DocumentColumns<Tender> columns(
        {column<Tender>(u"Title"_s, &Tender::title).field(u"txtTitle"_s, u"Title"_s),
         column<Tender>(u"Active"_s, &Tender::active).field(u"chkActive"_s, u"Active"_s),
         column<Tender>(u"VendorID"_s, &Tender::vendorId).field(u"dbcVend"_s, u"Vendor"_s).key(),
         column<Tender>(u"Company"_s, &Tender::company),
         column<Tender>(u"Terms"_s, &Tender::terms).field(u"txtTerms"_s, u"Terms"_s),
         column<Tender>(u"Total"_s, &Tender::total)
             .field(u"lblTotal"_s)
             .mask(u"0.00"_s)
             .secured()
             .computed()});
    return columns;
}

const core::DocumentLines<Item>& itemLines() {
    using core::column;
    static const core::DocumentColumns<Item> columns(
        {column<Item>(u"PartNo"_s, &Item::partNo), column<Item>(u"Notes"_s, &Item::notes),
         column<Item>(u"Quantity"_s, &Item::quantity).mask(u"0"_s),
         column<Item>(u"Price"_s, &Item::price).mask(u"0.0000"_s)});
    static const core::DocumentLines<Item> lines{
        columns, &Item::id, [](const Item& item) { return u"The item "_s + item.partNo; }};
    return lines;
}

core::ModuleDescriptor describe() {
    core::ModuleDescriptor module;
    module.formName = u"frmTender"_s;
    module.caption = module.moduleWord = module.table = u"Tender"_s;
    module.keyColumn = u"TenderNo"_s;
    module.select = u"SELECT * FROM Tender WHERE Active = True ORDER BY TenderNo"_s;
    module.dataControlName = u"datTender"_s;
    module.modeLabelName = u"lblMode"_s;
    module.deleteText = u"Delete?"_s;
    return module;
}

class frmTender : public core::LinedModule<Tender, Item> {
  public:
    frmTender()
        : LinedModule(describe(), tenderColumns(), itemLines(),
                      {u"TenderItem"_s, u"TenderNo"_s, u"ID"_s, u"ItemNumber"_s}) {
        auto* outside = new QVBoxLayout(this);
        outside->addWidget(modeLabel());
        screen::Fields make(this, outside);
        bindKey(make.shown(u"lblNumber"_s, u"Number:"_s));
        make.text(u"txtTitle"_s, u"Title:"_s);
        m_vendor = make.dataCombo(u"dbcVend"_s, u"Vendor:"_s);
        make.text(u"txtTerms"_s, u"Terms:"_s);
        make.check(u"chkActive"_s, u"Active?"_s);
        make.shown(u"lblTotal"_s, u"Total:"_s);
        m_all = make.check(u"chkAll"_s, u"Show Inactive and Active"_s);
        m_header.bind(*this, fields());
        const auto& columns = itemLines().columns;
        outside->addWidget(makeGrid(u"sprItem"_s, u"Items"_s,
                                    {{{u"Item #"_s}},
                                     lineColumn(columns, u"PartNo"_s, {u"Part #"_s}),
                                     lineColumn(columns, u"Quantity"_s, {u"Qty"_s}),
                                     lineColumn(columns, u"Price"_s, {u"Price"_s})}));
        outside->addWidget(makeGrid(u"sprNotes"_s, u"Notes"_s,
                                    {lineColumn(columns, u"PartNo"_s, {u"Part #"_s}),
                                     lineColumn(columns, u"Notes"_s, {u"Notes"_s})}));
        makeFoot(outside, standardButtons());
        on(m_vendor->chosen, [this] { copyVendor(); });
        on(m_all, [this] { reopen(mainSelect(), currentKey()); });
    }
    controls::LineModel<Item>& items() { return *m_lines; }

  protected:
    QString mainSelect() const override {
        return m_all->isChecked() ? u"SELECT * FROM Tender ORDER BY TenderNo"_s
                                  : descriptor().select;
    }
    void openLookups() override {
        m_vendor->setRows(core::MainDatabase().openRecordset(u"SELECT * FROM Vendor"_s),
                          u"Company"_s, u"VendID"_s);
    }
    void linesChanged() override {
        values::Currency total;
        for (const Item& item : m_lines->visibleRows())
            total += item.price * values::Currency::fromInteger(item.quantity);
        m_header.now().total = total;
        m_header.show(u"Total"_s);
    }

  private:
    void copyVendor() {
        Tender& tender = m_header.now();
        const jet::Recordset vendor = core::MainDatabase().openRecordset(
            u"SELECT * FROM Vendor WHERE VendID = "_s + QString::number(tender.vendorId));
        if (vendor.isEmpty())
            return;
        tender.company = vendor.text(u"Company");
        tender.terms = vendor.text(u"Terms");
        m_header.show(u"Terms"_s);
    }

    controls::DataCombo* m_vendor = nullptr;
    QCheckBox* m_all = nullptr;
};

// The module ends here.

class TenderTest : public testsupport::ShopTest {
  protected:
    void prepare() override {
        database().execute(u"CREATE TABLE Tender (TenderNo COUNTER PRIMARY KEY, Title TEXT(20), "
                           "Active YESNO, VendorID LONG, Company TEXT(40), Terms TEXT(20), "
                           "Total CURRENCY)"_s);
        database().execute(u"CREATE TABLE TenderItem (ID COUNTER PRIMARY KEY, TenderNo LONG, "
                           "ItemNumber INTEGER, PartNo TEXT(20), Notes TEXT(40), Quantity LONG, "
                           "Price CURRENCY)"_s);
        database().execute(u"INSERT INTO Vendor (Company, Terms) VALUES('Bolt & Co','Net 30')"_s);
        database().execute(u"INSERT INTO Tender (Title, Active) VALUES('Old', False)"_s);
        database().execute(u"INSERT INTO Tender (Title, Active, Total) VALUES('New', True, "
                           "10.0625)"_s);
        for (const char16_t* item : {u"1,'A-1',4,2.5", u"2,'B-2',1,0.0625"})
            database().execute(u"INSERT INTO TenderItem (TenderNo, ItemNumber, PartNo, Quantity, "
                               "Price) VALUES(2,"_s +
                               QString::fromUtf16(item) + u")"_s);
        screen::Forms::add(u"frmTender"_s, [] { return std::make_unique<frmTender>(); });
    }
    QStringList items() const {
        return rows(u"SELECT ID, ItemNumber, PartNo, Quantity, Price, Notes FROM TenderItem ORDER "
                    "BY ItemNumber"_s);
    }
};

TEST_P(TenderTest, LinesAndTheCopiedVendorAreStoredTogether) {
    open(u"frmTender"_s);
    EXPECT_EQ(text(u"lblNumber"_s), u"2"_s);
    EXPECT_EQ(text(u"lblTotal"_s), u"10.06"_s);
    press(u"cmdEdit"_s);
    choose(u"dbcVend"_s, u"Bolt & Co"_s);
    EXPECT_EQ(text(u"txtTerms"_s), u"Net 30"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Title, Company, Terms, Total FROM Tender WHERE TenderNo = 2"_s),
              QStringList(u"New|Bolt & Co|Net 30|10.0625"_s))
        << "a sum that is shown rounded keeps its decimals";

    press(u"cmdEdit"_s);
    setCell(u"sprItem"_s, 1, 2, u"3"_s);
    setCell(u"sprNotes"_s, 1, 1, u"zinc"_s);
    auto& lines = dynamic_cast<frmTender&>(form()).items();
    lines.hide(0);
    Item added;
    added.partNo = u"C-3"_s;
    added.quantity = 2;
    lines.insert(2, added);
    EXPECT_EQ(text(u"lblTotal"_s), u"0.19"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(items(), QStringList({u"2|1|B-2|3|0.0625|zinc"_s, u"3|2|C-3|2|0|"_s}));
    // Copied once: what becomes of the vendor doesn't reach it.
    database().execute(u"UPDATE Vendor SET Terms = 'Cash'"_s);
    form().Form_Activate();
    EXPECT_EQ(text(u"txtTerms"_s), u"Net 30"_s);
}

TEST_P(TenderTest, TwoStationsAreJoinedLineByLine) {
    open(u"frmTender"_s);
    press(u"cmdEdit"_s);
    setCell(u"sprItem"_s, 0, 2, u"5"_s);
    const auto other = anotherStation();
    other->execute(u"UPDATE TenderItem SET Notes = 'theirs' WHERE ID = 1"_s);
    other->execute(u"UPDATE Tender SET Terms = 'theirs' WHERE TenderNo = 2"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(items().first(), u"1|1|A-1|5|2.5|theirs"_s);
    EXPECT_EQ(text(u"txtTerms"_s), u"theirs"_s);
    press(u"cmdEdit"_s);
    setCell(u"sprItem"_s, 0, 2, u"6"_s);
    type(u"txtTitle"_s, u"Mine"_s);
    other->execute(u"UPDATE TenderItem SET Quantity = 7 WHERE ID = 1"_s);
    expectBoxContaining(u"The item A-1: Quantity has been changed at another station since you "
                        "opened this record.\r\nThere: 7\r\nHere: 6"_s,
                        Answer::Yes);
    press(u"cmdSave"_s);
    EXPECT_EQ(cell(u"sprItem"_s, 0, 2), u"7"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Title FROM Tender WHERE TenderNo = 2"_s), QStringList(u"Mine"_s));
}

TEST_P(TenderTest, AddedCancelledFilteredAndDeleted) {
    open(u"frmTender"_s);
    press(u"cmdNew"_s);
    type(u"txtTitle"_s, u"Third"_s);
    check(u"chkActive"_s);
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    EXPECT_EQ(text(u"txtTitle"_s), u"New"_s);
    press(u"cmdNew"_s);
    type(u"txtTitle"_s, u"Third"_s);
    check(u"chkActive"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblNumber"_s), u"3"_s);
    expectBox(u"Delete?"_s, Answer::Yes);
    press(u"cmdDelete"_s);
    EXPECT_EQ(text(u"lblNumber"_s), u"2"_s) << "the inactive one isn't shown";
    check(u"chkAll"_s);
    expectBox(u"Delete?"_s, Answer::Yes);
    press(u"cmdDelete"_s);
    EXPECT_EQ(text(u"txtTitle"_s), u"Old"_s);
    EXPECT_EQ(items(), QStringList());
}

/// A line that goes while the server answers: the save is done, or it is not, and nobody hears.
class frmUnheard : public frmTender {
  public:
    static inline int unheard = 0;
    static inline bool stores = true;

  protected:
    core::SaveOutcome store(qint64 key, Doc& document, const Doc* before,
                            const QStringList& settled) override {
        core::SaveOutcome outcome;
        if (stores)
            outcome = frmTender::store(key, document, before, settled);
        else
            document.documentNo = 99;
        if (unheard-- > 0)
            throw jet::Error(jet::errors::connectionFailed, u"The line is gone."_s);
        return outcome;
    }
};

TEST_P(TenderTest, ASaveWhoseEndWasNotHeardIsLookedForFirst) {
    screen::Forms::add(u"frmTender"_s, [] { return std::make_unique<frmUnheard>(); });
    open(u"frmTender"_s);
    const auto add = [this](const QString& title) {
        press(u"cmdNew"_s);
        type(u"txtTitle"_s, title);
        check(u"chkActive"_s);
    };
    frmUnheard::unheard = 1;
    add(u"Stored"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblMode"_s), u"BROWSE"_s) << "it was found";
    EXPECT_EQ(text(u"lblNumber"_s), u"3"_s);
    press(u"cmdEdit"_s);
    frmUnheard::unheard = 1;
    type(u"txtTitle"_s, u"Stored again"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblMode"_s), u"BROWSE"_s);

    frmUnheard::unheard = 1;
    frmUnheard::stores = false;
    add(u"Not stored"_s);
    expectBox(u"The line is gone."_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"txtTitle"_s), u"Not stored"_s);
    frmUnheard::stores = true;
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Title FROM Tender ORDER BY TenderNo"_s),
              QStringList({u"Old"_s, u"New"_s, u"Stored again"_s, u"Not stored"_s}));
}

MIRSA_BOTH_ENGINES(TenderTest);

} // namespace
