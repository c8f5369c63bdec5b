#include "core/MirsaMain.h"
#include "core/drafts/Draft.h"
#include "core/records/RecordModule.h"
#include "platform/values/Literals.h"
#include "support/DelayingLine.h"
#include "support/SampleFixture.h"

#include <QElapsedTimer>
#include <QUrl>

#include <array>
#include <atomic>
#include <random>
#include <thread>

namespace {

using screen::Answer;
using screen::Forms;

/// An office at the far end of a line that is cut, falls silent, and whose server ends its
/// connections, at any moment. MIRSA_TROUBLE_SECONDS says for how long; 20 if not said.
class BrokenLine : public testsupport::SampleTest {
  protected:
    BrokenLine() : SampleTest(12) {}
    void prepare() override {
        SampleTest::prepare();
        m_other = anotherStation();
        m_line = std::make_unique<testsupport::DelayingLine>(databaseLocation());
        core::SharedState& state = core::shared();
        state.MainDatabase = jet::Database::openServer(m_line->uri());
        state.DatabasePath = state.MainDatabase->name();
        useDatabase(*m_other);
        // Retry mostly, as whoever is at the desk; Close now and then.
        screen::seams().msgBox = [this](const QString& said, screen::Buttons buttons, screen::Icon,
                                        const QString&, Answer) {
            ++m_told;
            if (buttons == screen::Buttons::RetryClose)
                return m_chance() % 3 == 0 ? Answer::Close : Answer::Retry;
            if (buttons == screen::Buttons::YesNoCancel)
                return Answer::No;
            if (buttons != screen::Buttons::YesNo)
                m_said << said;
            return buttons == screen::Buttons::YesNo ? Answer::Yes : Answer::Ok;
        };
        screen::seams().runTimeError = [this](int number, const QString& text) {
            ADD_FAILURE() << number << ' ' << text.toStdString();
            m_stop = true;
        };
        screen::seams().endProcess = [](int) { ADD_FAILURE() << "the program ended"; };
    }
    void TearDown() override {
        m_stop = true;
        if (m_trouble.joinable())
            m_trouble.join();
        m_line.reset();
        SampleTest::TearDown();
    }

    void makeTrouble() {
        m_trouble = std::thread([this, name = QUrl(databaseLocation()).path().mid(1)] {
            std::mt19937 chance(7);
            const auto pause = [&](unsigned from, unsigned to) {
                std::this_thread::sleep_for(
                    std::chrono::milliseconds(from + chance() % (to - from)));
            };
            while (!m_stop) {
                pause(50, 700);
                switch (chance() % 4) {
                case 0:
                case 1:
                    m_line->cut();
                    break;
                case 2:
                    m_line->setSilent(true);
                    pause(100, m_seconds > 60 ? 20000 : 1500);
                    m_line->setSilent(false);
                    break;
                default:
                    testsupport::onTestServer(
                        u"DO $$ BEGIN PERFORM pg_terminate_backend(pid) FROM pg_stat_activity "
                        "WHERE datname = '%1'; END $$"_s.arg(name));
                }
            }
            m_line->setSilent(false);
        });
    }

    const int m_seconds = qEnvironmentVariable("MIRSA_TROUBLE_SECONDS", u"20"_s).toInt();
    std::unique_ptr<testsupport::DelayingLine> m_line;
    std::unique_ptr<jet::Database> m_other;
    std::thread m_trouble;
    std::atomic<bool> m_stop{false};
    std::mt19937 m_chance{11};
    int m_told = 0;
    QStringList m_said;
};

struct Module {
    QString form, table, field, column;
};

} // namespace

TEST_P(BrokenLine, LosesNoAcknowledgedSaveAndNothingThatWasTyped) {
    const std::array modules{
        Module{u"frmCustomer"_s, u"Customer"_s, u"txtCustomer"_s, u"Company"_s},
        Module{u"frmJob"_s, u"Job"_s, u"txtDescription"_s, u"Description"_s},
        Module{u"frmEstimate"_s, u"Estimate"_s, u"txtDescription"_s, u"Description"_s},
    };
    for (const auto& module : modules)
        ASSERT_TRUE(open(module.form));
    makeTrouble();
    QElapsedTimer time;
    time.start();
    int rounds = 0, unsaved = 0;
    std::vector<std::pair<const Module*, QString>> saved;
    while (!m_stop && time.elapsed() < m_seconds * 1000) {
        const Module& module = modules[static_cast<std::size_t>(rounds % 3)];
        const bool adding = rounds % 3 == 0;
        auto* screen = Forms::find<core::RecordModule>(module.form);
        use(screen);
        const QString typed = u"Round %1"_s.arg(++rounds);
        // A handler that fails leaves the screen as it was: begun again, as at the desk.
        for (int i = 0; i < 20 && screen->mode() == u"Browse"; ++i)
            press(adding ? u"cmdNew"_s : u"cmdEdit"_s);
        ASSERT_NE(screen->mode(), u"Browse");
        type(module.field, typed);
        for (int i = 0; i < 40 && screen->mode() != u"Browse"; ++i) {
            EXPECT_EQ(text(module.field), typed);
            press(u"cmdSave"_s);
        }
        if (screen->mode() == u"Browse")
            saved.emplace_back(&module, typed);
        else
            ++unsaved;
        ASSERT_LT(unsaved, 5);
    }
    m_stop = true;
    m_trouble.join();
    std::map<QString, QStringList> edited;
    for (const auto& [module, typed] : saved) {
        const int there = m_other
                              ->lookup(u"SELECT COUNT(*) FROM %1 WHERE %2 = '%3'"_s.arg(
                                  module->table, module->column, typed))
                              .toLong();
        if (module->table == u"Customer")
            EXPECT_EQ(there, 1) << typed.toStdString();
        else
            edited[module->table] << typed;
    }
    for (const auto& module : modules) {
        if (edited.contains(module.table)) {
            EXPECT_EQ(rows(u"SELECT %1 FROM %2 WHERE %1 = '%3'"_s.arg(module.column, module.table,
                                                                      edited[module.table].last())),
                      QStringList{edited[module.table].last()});
        }
    }
    EXPECT_EQ(m_said, QStringList());
    RecordProperty("rounds", rounds);
    RecordProperty("told", m_told);
    std::printf("%d rounds, %zu saved, %d boxes\n", rounds, saved.size(), m_told);
    for (screen::Form* form : Forms::all()) {
        if (auto* module = dynamic_cast<core::RecordModule*>(form))
            module->ShowModuleMode(core::RecordModule::Mode::Browse);
    }
}

// A file has no line.
INSTANTIATE_TEST_SUITE_P(OneEngine, BrokenLine, ::testing::Values(testsupport::EngineKind::Server),
                         testsupport::engineName);
