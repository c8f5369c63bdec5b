#include "core/MirsaMain.h"
#include "core/drafts/Draft.h"
#include "core/drafts/DraftOffer.h"
#include "core/records/RecordModule.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/system/Remembered.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "support/SampleFixture.h"

#include <QCheckBox>
#include <QDir>
#include <QJsonDocument>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>

namespace {

using core::RecordModule;
using screen::Answer;
using screen::Forms;

/// Entries that a program which ended otherwise than by its user left behind.
class Drafts : public testsupport::SampleTest {
  protected:
    Drafts() : SampleTest(12) {}
    void prepare() override {
        SampleTest::prepare();
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(14, 2)));
        core::shared().DatabasePath = database().name();
    }
    void TearDown() override {
        for (screen::Form* form : Forms::all()) {
            if (auto* module = dynamic_cast<RecordModule*>(form);
                module && module->mode() != u"Browse")
                module->ShowModuleMode(RecordModule::Mode::Browse);
        }
        SampleTest::TearDown();
    }

    RecordModule* begin(const QString& form, qint64 key) {
        auto* module = openAs<RecordModule>(form);
        if (key == 0) {
            module->ShowModuleMode(RecordModule::Mode::Add);
        } else {
            EXPECT_TRUE(module->goToRecord(key));
            press(u"cmdEdit"_s);
        }
        settle();
        return module;
    }
    qint64 last(const QString& table, const QString& key) const {
        return database().lookup(u"SELECT MAX(%1) FROM %2"_s.arg(key, table)).toLong();
    }
    static QStringList files() {
        QStringList found;
        const QDir all(platform::rememberedFolder() + u"/drafts"_s);
        const auto runs = all.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QFileInfo& run : runs) {
            const auto inside = QDir(run.filePath()).entryInfoList({u"*.draft"_s}, QDir::Files);
            for (const QFileInfo& file : inside)
                found << file.filePath();
        }
        return found;
    }
    /// The drafts that a crash would leave now; they are put back when the entries have been left.
    static std::map<QString, QByteArray> taken(RecordModule* module) {
        module->keepDraft();
        core::drafts::finish();
        std::map<QString, QByteArray> kept;
        for (const QString& path : files()) {
            QFile file(path);
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
            kept[QFileInfo(path).fileName()] = file.readAll();
        }
        return kept;
    }
    static void crashWith(const std::map<QString, QByteArray>& kept) {
        core::drafts::finish();
        EXPECT_EQ(files(), QStringList()) << "gone with the entry";
        const QString dead = platform::rememberedFolder() + u"/drafts/dead/"_s;
        QDir().mkpath(dead);
        for (const auto& [name, content] : kept) {
            QFile file(dead + name);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
    }
    void crash(RecordModule* module) {
        const auto kept = taken(module);
        EXPECT_EQ(kept.size(), 1U) << module->name().toStdString();
        expectBoxContaining(u"Would you like to save the current record before closing?"_s,
                            Answer::No);
        EXPECT_TRUE(module->unload());
        settle();
        crashWith(kept);
    }
    /// What was entered in the fields, boxes and lists of the screen; without the figures that are
    /// reckoned from it when a field is left.
    QStringList seen() const {
        static const QRegularExpression reckoned(
            u"^(fpQtyPrice|fpQtyTotal|fpOutContr|fpFixed|txtQtyBreak\\(0\\)|txtTotal)"_s);
        QStringList all;
        const auto widgets = form().findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            const auto* field = dynamic_cast<controls::Field*>(widget);
            if (field && reckoned.match(widget->objectName()).hasMatch())
                continue;
            if (field && values::isNumeric(field->text()))
                all << widget->objectName() + u'=' + QString::number(values::val(field->text()));
            else if (field)
                all << widget->objectName() + u'=' + field->text();
            else if (const auto* box = dynamic_cast<QCheckBox*>(widget))
                all << widget->objectName() + (box->isChecked() ? u" yes"_s : u" no"_s);
            else if (dynamic_cast<controls::Grid*>(widget))
                all << cells(widget->objectName());
        }
        all.sort();
        return all;
    }
    /// Types something into each text and date that takes it.
    void fillFields(const QString& mark) {
        const auto widgets = form().findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            auto* field = dynamic_cast<controls::Field*>(widget);
            if (!field || field->isLocked() || !widget->isEnabled() ||
                widget->objectName().isEmpty())
                continue;
            if (dynamic_cast<controls::DateField*>(widget))
                field->setText(u"3/"_s + mark + u"/2026"_s);
            else if (dynamic_cast<controls::TextField*>(widget) ||
                     dynamic_cast<controls::MemoField*>(widget))
                field->setText(mark);
        }
        settle();
    }
    void offered(const QString& question, Answer answer = Answer::Yes) {
        expectBox(question, answer, u"Draft"_s);
        core::offerDrafts();
        expectNothingLeft();
    }
};

const struct {
    const char16_t* form;
    const char16_t* word;
    const char16_t* table;
    const char16_t* key;
} modules[] = {
    {u"frmCustomer", u"Customer", u"Customer", u"CustID"},
    {u"frmVendor", u"Vendor", u"Vendor", u"VendID"},
    {u"frmEmployee", u"Employee", u"Employee", u"EmpID"},
    {u"frmEstimate", u"Estimate", u"Estimate", u"EstNo"},
    {u"frmJob", u"Job", u"Job", u"JobNo"},
    {u"frmRFQ", u"RFQ", u"RFQ", u"PONumber"},
    {u"frmPO", u"Purchase Order", u"PO", u"PONumber"},
};

} // namespace

TEST_P(Drafts, EveryModuleGoesOnWithTheEntryThatWasOpen) {
    for (const auto& module : modules) {
        const QString form = QString::fromUtf16(module.form),
                      word = QString::fromUtf16(module.word);
        const qint64 key = last(QString::fromUtf16(module.table), QString::fromUtf16(module.key));
        for (const bool adding : {false, true}) {
            if (adding && form == u"frmRFQ")
                continue; // its new groups are edited as soon as they are made
            SCOPED_TRACE(form.toStdString() + (adding ? " new" : ""));
            RecordModule* open = begin(form, adding ? 0 : key);
            open->keepDraft();
            EXPECT_EQ(files(), QStringList()) << "nothing was typed";
            fillFields(u"7"_s);
            const QStringList typed = seen();
            crash(open);
            offered(adding
                        ? u"A new %1 was being entered at 14:02. Open the draft?"_s.arg(word)
                        : u"%1 %2 was being edited at 14:02. Open the draft?"_s.arg(word).arg(key));
            use(Forms::find(form));
            EXPECT_EQ(seen(), typed);
            open = Forms::find<RecordModule>(form);
            EXPECT_EQ(open->mode(), adding ? u"Add"_s : u"Edit"_s);
            expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
            press(u"cmdCancel"_s);
            core::offerDrafts();
            open->unload();
            settle();
        }
    }
}

TEST_P(Drafts, RoutingsNotesAndRfqNotesAreSavedAsTheyWereTyped) {
    const qint64 estNo =
        database().lookup(u"SELECT MAX(EstNo) FROM EstOper WHERE SeqNo = 4"_s).toLong();
    const QString select =
        u"SELECT EstOper.SeqNo, EstOper.OperNo, EstOper.OperTime_Amount, OperNotes FROM "
        "EstOper LEFT JOIN EstOperNote ON EstOper.ID = EstOperNote.ID WHERE "
        "EstOper.EstNo = %1 ORDER BY EstOper.SeqNo"_s.arg(estNo);
    const auto write = [this](int row, const QString& note) {
        whenShown(u"frmEstOperNote"_s, [this, note] {
            type(u"Text1"_s, note);
            press(u"cmdOK"_s);
        });
        clickCell(u"sprOper"_s, row, 1);
    };
    RecordModule* open = begin(u"frmEstimate"_s, estNo);
    setCell(u"sprOper"_s, 0, 3, u"9.125"_s);
    write(0, u"first"_s);
    write(2, u"third, it's new"_s);
    control<controls::Grid>(u"sprOper"_s)->setActiveRow(1);
    expectBoxContaining(u"Delete operation"_s, Answer::Yes);
    press(u"cmdOper(1)"_s);
    go(u"sprOper"_s);
    control<controls::Grid>(u"sprOper"_s)->setActiveRow(2);
    key(Qt::Key_Up, Qt::AltModifier);
    type(u"txtNotes(2)"_s, u"asked by phone"_s);
    const QStringList typed = seen();
    crash(open);
    offered(u"Estimate %1 was being edited at 14:02. Open the draft?"_s.arg(estNo));
    use(Forms::find(u"frmEstimate"_s));
    EXPECT_EQ(seen(), typed);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"BROWSE"_s);
    const QStringList stored = rows(select);
    EXPECT_TRUE(stored[0].startsWith(u"1|"_s) && stored[0].endsWith(u"|9.125|first"_s))
        << stored[0].toStdString();
    EXPECT_EQ(stored.filter(u"third, it's new"_s).size(), 1);
    EXPECT_EQ(rows(u"SELECT SeqNo FROM EstOperNote WHERE ID = 0 OR SeqNo = 0"_s), QStringList());
    EXPECT_EQ(
        rows(u"SELECT RfqNotes.rfqnotes FROM RfqNotes, Estimate WHERE RfqNotes.CustID = "
             "Estimate.CustID AND RfqNotes.RFQNo = Estimate.RFQNo AND EstNo = %1"_s.arg(estNo)),
        QStringList{u"asked by phone"_s});
    core::offerDrafts();
}

TEST_P(Drafts, NothingIsOfferedThatWasSavedEvenWhereTheProgramEndedBeforeTheDraftWasGone) {
    const qint64 before = last(u"Customer"_s, u"CustID"_s);
    for (const qint64 key : {before, qint64{0}}) {
        RecordModule* open = begin(u"frmCustomer"_s, key);
        type(u"txtCustomer"_s, u"Saved & Sons"_s);
        auto kept = taken(open);
        press(u"cmdSave"_s);
        for (auto& [name, content] : kept) { // as the save writes it before it commits
            QJsonObject draft = QJsonDocument::fromJson(content).object();
            draft[u"saving"_s] = key == 0;
            content = QJsonDocument(draft).toJson();
        }
        crashWith(kept);
        core::offerDrafts();
        EXPECT_EQ(files(), QStringList());
    }
    // A save that was begun and came to nothing.
    RecordModule* open = begin(u"frmCustomer"_s, 0);
    type(u"txtCustomer"_s, u"Not yet saved"_s);
    auto kept = taken(open);
    for (auto& [name, content] : kept)
        content.replace(R"("saving":false)", R"("saving":true)");
    open->ShowModuleMode(RecordModule::Mode::Browse);
    crashWith(kept);
    offered(u"A new Customer was being entered at 14:02. Open the draft?"_s);
    EXPECT_EQ(text(u"txtCustomer"_s), u"Not yet saved"_s);
}

TEST_P(Drafts, IsJoinedWithWhatOthersStoredAndShownWhereTheRecordHasGone) {
    const qint64 jobNo = last(u"Job"_s, u"JobNo"_s);
    const QString where = u" WHERE JobNo = %1"_s.arg(jobNo);
    const QString question = u"Job %1 was being edited at 14:02. Open the draft?"_s.arg(jobNo);
    RecordModule* open = begin(u"frmJob"_s, jobNo);
    type(u"txtDescription"_s, u"Typed here"_s);
    crash(open);
    const auto other = anotherStation();
    other->execute(u"UPDATE Job SET Material = 'Brass', Description = 'Typed there'"_s + where);
    offered(question);
    use(Forms::find(u"frmJob"_s));
    expectBoxContaining(u"There: Typed there\r\nHere: Typed here"_s, Answer::Yes);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Description, Material FROM Job"_s + where),
              QStringList{u"Typed here|Brass"_s});

    open = begin(u"frmJob"_s, jobNo);
    type(u"txtDescription"_s, u"For nobody"_s);
    crash(open);
    for (const auto* table : {u"JobOper", u"Job"})
        other->execute(u"DELETE * FROM "_s + QString::fromUtf16(table) + where);
    for (const auto* button : {u"cmdKeep", u"cmdThrowAway"}) {
        whenShown(u"frmDraft"_s, [&] {
            EXPECT_TRUE(
                control<QPlainTextEdit>(u"txtDraft"_s)->toPlainText().contains(u"For nobody"_s));
            press(QString::fromUtf16(button));
        });
        offered(question);
    }
    core::offerDrafts();
}

TEST_P(Drafts, AreForTheirUserAloneAndGoByHisWordOnly) {
    RecordModule* open = begin(u"frmVendor"_s, 0);
    type(u"txtVendor"_s, u"Somebody"_s);
    crash(open);
    core::shared().CurrentUserName = u"Pat"_s;
    core::offerDrafts();
    core::shared().CurrentUserName = u"ADMIN"_s;
    const QString question = u"A new Vendor was being entered at 14:02. Open the draft?"_s;
    for (const Answer thrown : {Answer::No, Answer::Yes}) {
        expectBox(question, Answer::No);
        expectBoxContaining(u"Throw the draft away?"_s, thrown);
        core::offerDrafts();
        expectNothingLeft();
    }
    core::offerDrafts();
}

TEST_P(Drafts, HaveNoMoneyOfAUserWhoMayNotSeeIt) {
    core::shared().CurrentUserName = u"Sam"_s;
    core::shared().CurrentUserNo = 77;
    const qint64 estNo =
        database().lookup(u"SELECT MAX(EstNo) FROM EstOper WHERE SeqNo = 4"_s).toLong();
    database().execute(u"UPDATE Estimate SET QtyQPA = 98765.5 WHERE EstNo = %1"_s.arg(estNo));
    database().execute(u"UPDATE EstOper SET OperShopRate = 4321.5 WHERE EstNo = %1"_s.arg(estNo));
    RecordModule* open = begin(u"frmEstimate"_s, estNo);
    type(u"txtDescription"_s, u"Without money"_s);
    const auto kept = taken(open);
    const QByteArray content = kept.begin()->second;
    EXPECT_TRUE(content.contains("Without money"));
    EXPECT_FALSE(content.contains("98765.5")) << content.toStdString();
    EXPECT_FALSE(content.contains("4321.5"));
    crash(open);
    offered(u"Estimate %1 was being edited at 14:02. Open the draft?"_s.arg(estNo));
    use(Forms::find(u"frmEstimate"_s));
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Description, QtyQPA FROM Estimate WHERE EstNo = %1"_s.arg(estNo)),
              QStringList{u"Without money|98765.5"_s});
    EXPECT_EQ(
        rows(u"SELECT COUNT(*) FROM EstOper WHERE OperShopRate = 4321.5 AND EstNo = %1"_s.arg(
            estNo)),
        rows(u"SELECT COUNT(*) FROM EstOper WHERE OperShopRate > 0 AND EstNo = %1"_s.arg(estNo)));
}

TEST_P(Drafts, OfStationsKilledWhileTypingHaveAllButTheLastSeconds) {
    const qint64 estNo = last(u"Estimate"_s, u"EstNo"_s);
    const QString remembered = platform::rememberedFolder() + u"/remembered.ini"_s;
    const struct {
        QString form, field;
        qint64 key;
    } stations[] = {{u"frmCustomer"_s, u"txtCustomer"_s, 0},
                    {u"frmEstimate"_s, u"txtDescription"_s, estNo}};
    database().execute(u"UPDATE Estimate SET Description = '' WHERE EstNo = %1"_s.arg(estNo));
    std::vector<std::unique_ptr<QProcess>> running;
    for (const auto& station : stations) {
        running.push_back(std::make_unique<QProcess>());
        running.back()->start(QStringLiteral(MIRSA_ENTRY_TYPIST),
                              {databaseLocation(), remembered, station.form,
                               QString::number(station.key), station.field});
    }
    for (int i = 0; i < 600 && files().size() < 2; ++i)
        QThread::msleep(50);
    core::offerDrafts(); // theirs who are at work are nobody's
    QThread::msleep(700);
    std::vector<QString> typed;
    for (auto& station : running) {
        station->kill();
        ASSERT_TRUE(station->waitForFinished());
        const auto lines = station->readAllStandardOutput().trimmed().split('\n');
        typed.push_back(QString::fromUtf8(lines.last()));
    }
    ASSERT_EQ(files().size(), 2);
    for (int i = 0; i < 2; ++i)
        expectBoxContaining(u"Open the draft?"_s, Answer::Yes);
    core::offerDrafts();
    for (std::size_t i = 0; i < 2; ++i) {
        use(Forms::find(stations[i].form));
        const QString draft = text(stations[i].field);
        EXPECT_GE(draft.size(), 3);
        EXPECT_TRUE(typed[i].startsWith(draft)) << draft.toStdString();
        press(u"cmdSave"_s);
        EXPECT_EQ(Forms::find<core::RecordScreen>(stations[i].form)->mode(), u"Browse");
        EXPECT_EQ(text(stations[i].field), draft);
    }
    core::offerDrafts();
}

TEST_P(Drafts, AndNotesOfAStationKilledWhileItMovesOperationsStayWithThem) {
    const qint64 estNo =
        database().lookup(u"SELECT MAX(EstNo) FROM EstOper WHERE SeqNo = 4"_s).toLong();
    const QString where = u" WHERE EstNo = %1"_s.arg(estNo);
    database().execute(u"DELETE * FROM EstOperNote"_s + where);
    database().execute(u"INSERT INTO EstOperNote (ID, EstNo, SeqNo, OperNotes) SELECT ID, EstNo, "
                       "SeqNo, 'of ' & OperNo FROM EstOper"_s +
                       where);
    const QString notes = u"SELECT EstOper.OperNo, OperNotes FROM EstOper INNER JOIN EstOperNote "
                          "ON EstOper.ID = EstOperNote.ID AND EstOper.SeqNo = EstOperNote.SeqNo "
                          "WHERE EstOper.EstNo = %1 ORDER BY EstOper.OperNo"_s.arg(estNo);
    const QStringList whole = rows(notes);
    ASSERT_GE(whole.size(), 4);
    for (int round = 0; round < 3; ++round) {
        QProcess station;
        station.start(QStringLiteral(MIRSA_ENTRY_TYPIST),
                      {databaseLocation(), platform::rememberedFolder() + u"/remembered.ini"_s,
                       u"frmEstimate"_s, QString::number(estNo), u"sprOper"_s});
        ASSERT_TRUE(station.waitForReadyRead(30000));
        QThread::msleep(static_cast<unsigned long>(150 + 77 * round));
        station.kill();
        ASSERT_TRUE(station.waitForFinished());
        RecordModule* open = begin(u"frmEstimate"_s, estNo);
        EXPECT_EQ(rows(notes), whole) << "put back where its edit begins";
        type(u"txtDescription"_s, u"Round %1"_s.arg(round));
        press(u"cmdSave"_s);
        EXPECT_EQ(rows(notes), whole);
        EXPECT_EQ(rows(u"SELECT COUNT(*) FROM EstOperNote"_s + where),
                  QStringList{QString::number(whole.size())});
        open->unload();
        settle();
    }
}

MIRSA_BOTH_ENGINES(Drafts);
