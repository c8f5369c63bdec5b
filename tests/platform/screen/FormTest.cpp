#include "platform/values/Literals.h"
#include "support/ScreenFixture.h"

#include "platform/jet/Error.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Numbers.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabWidget>
#include <QTimer>

using namespace screen;

namespace {

/// What the forms of these tests did, and what they are to do.
struct Script {
    QStringList log;
    std::function<void(Form&)> load;
    std::function<bool()> queryUnload;
    std::function<void(Form&)> save;
    std::function<void(Form&)> cancel;
};
Script script;

struct Numbered {
    virtual ~Numbered() = default;
    virtual void setNumber(int number) = 0;
};

class TriedForm : public Form, public Numbered {
  public:
    explicit TriedForm(const QString& name) : Form(name, u"Tried"_s) {
        auto* layout = new QVBoxLayout(this);
        auto* tabs = new QTabWidget(this);
        layout->addWidget(tabs);
        Fields first(tab(tabs, u"First"_s));
        rate = first.text(u"txtRate"_qs, u"&Rate:"_qs, {.mask = u"#0.00"_qs});
        first.memo(u"txtNotes"_qs, u"N&otes:"_qs);
        Fields second(tab(tabs, u"Second"_s));
        second.text(u"txtFar"_qs, u"&Far:"_qs);
        ButtonBar bar(this, layout);
        auto* save = bar.button(u"cmdSave"_qs, u"&Save"_qs);
        auto* cancel = bar.button(u"cmdCancel"_qs, u"Cancel"_qs);
        bar.button(u"cmdOther"_qs, u"Other"_qs);
        on(save, &TriedForm::cmdSave_Click);
        on(cancel, &TriedForm::cmdCancel_Click);
        on(control<QPushButton>(u"cmdOther"_qs), [this] { say(u"other"_qs); });
        setDefaultButton(save);
        setCancelButton(cancel);
    }
    ~TriedForm() override { say(u"deleted"_qs); }
    void setNumber(int number) override { say(u"number %1"_qs.arg(number)); }
    void Form_Load() override {
        say(u"load"_qs);
        if (script.load)
            script.load(*this);
    }
    void Form_Activate() override { say(u"activate"_qs); }
    bool Form_QueryUnload() override {
        say(u"query"_qs);
        return !script.queryUnload || script.queryUnload();
    }
    void cmdSave_Click() {
        say(u"save "_qs + rate->text());
        if (script.save)
            script.save(*this);
    }
    void cmdCancel_Click() {
        say(u"cancel"_qs);
        if (script.cancel)
            script.cancel(*this);
        else
            hideModal();
    }
    void refuseIt() { refuse(); }
    void complainAbout(const QString& text, const QString& field) {
        complain(text, control<QWidget>(field));
    }

  private:
    void say(const QString& what) { script.log << name() + u' ' + what; }
    controls::TextField* rate;
};

class FormTest : public testsupport::ScreenFixture {
  protected:
    FormTest() {
        script = {};
        for (const char16_t* name : {u"frmOne", u"frmTwo", u"frmAsk"}) {
            const QString made = QString::fromUtf16(name);
            Forms::add(made, [made] { return std::make_unique<TriedForm>(made); });
        }
    }
    QString log() {
        const QString all = script.log.join(u", "_qs);
        script.log.clear();
        return all;
    }
};

TEST_F(FormTest, OpensOnceComesForwardAndIsKnownByName) {
    auto* one = open(u"frmOne"_qs);
    EXPECT_EQ(log(), u"frmOne load, frmOne activate"_qs);
    EXPECT_EQ(focusName(), u"txtRate"_qs);
    auto* two = open(u"FRMTWO"_qs);
    EXPECT_EQ(Forms::active(), two);
    EXPECT_EQ(log(), u"frmTwo load, frmTwo activate"_qs);
    EXPECT_EQ(open(u"frmone"_qs), one);
    EXPECT_EQ(log(), u"frmOne activate"_qs);
    EXPECT_EQ(Forms::all(), (QList<Form*>{one, two}));
    EXPECT_TRUE(Forms::isLoaded(u"FRMTWO"_qs));
    EXPECT_FALSE(Forms::isLoaded(u"frmAsk"_qs));
    ASSERT_TRUE(Forms::find<Numbered>(u"frmTwo"_qs));
    EXPECT_EQ(Forms::show(u"frmNowhere"_qs), nullptr);
    EXPECT_TRUE(one->unload());
    settle();
    EXPECT_EQ(log(), u"frmOne query, frmTwo activate, frmOne deleted"_qs);
    EXPECT_EQ(shellArea().subWindowList().size(), 1);
    EXPECT_EQ(Forms::find(u"frmOne"_qs), nullptr);
}

TEST_F(FormTest, AFormThatRefusesOrFailsToLoadIsNotOpened) {
    script.load = [](Form& form) { dynamic_cast<TriedForm&>(form).refuseIt(); };
    EXPECT_EQ(Forms::show(u"frmOne"_qs), nullptr);
    EXPECT_EQ(log(), u"frmOne load, frmOne deleted"_qs);
    script.load = [](Form&) { throw jet::Error(3078, u"no table"_qs); };
    expectRunTimeError(3078);
    EXPECT_EQ(Forms::show(u"frmOne"_qs), nullptr);
    script.load = [](Form& form) { form.unload(); };
    EXPECT_EQ(Forms::show(u"frmOne"_qs), nullptr);
    EXPECT_TRUE(Forms::all().isEmpty());
    EXPECT_TRUE(shellArea().subWindowList().isEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FormTest, StaysOpenByWhateverWayWhenItsUnloadSaysNo) {
    const QPointer<Form> one(open(u"frmOne"_qs));
    script.queryUnload = [] { return false; };
    EXPECT_FALSE(one->unload());
    auto* frame = qobject_cast<QMdiSubWindow*>(one->parentWidget());
    ASSERT_TRUE(frame);
    EXPECT_FALSE(frame->close());
    shellArea().closeAllSubWindows();
    settle();
    ASSERT_TRUE(one);
    EXPECT_TRUE(one->isVisible());
    script.queryUnload = {};
    EXPECT_TRUE(frame->close());
    settle();
    EXPECT_FALSE(one);
    EXPECT_TRUE(shellArea().subWindowList().isEmpty());
    EXPECT_FALSE(Forms::isLoaded(u"frmOne"_qs));
}

TEST_F(FormTest, AFormThatIsUnloadedUnderItsOwnHandlerLivesUntilTheHandlerEnds) {
    const QPointer<Form> one(open(u"frmOne"_qs));
    script.save = [&](Form& form) {
        script.save = {};
        // The dialog over it closes it while this handler waits.
        whenShown(u"frmAsk"_qs, [this] {
            EXPECT_TRUE(Forms::find(u"frmOne"_qs)->unload());
            settle();
            press(u"cmdCancel"_qs);
        });
        Forms::showModal(u"frmAsk"_qs);
        ASSERT_TRUE(one);
        EXPECT_EQ(form.name(), u"frmOne"_qs);
    };
    press(u"cmdSave"_qs);
    EXPECT_FALSE(one);
    EXPECT_TRUE(shellArea().subWindowList().isEmpty());
}

TEST_F(FormTest, ADialogTakesItsArgumentsAndKeepsItsFieldsAfterwards) {
    open(u"frmOne"_qs);
    log();
    {
        auto dialog = Forms::dialog<Numbered>(u"frmAsk"_qs);
        EXPECT_TRUE(Forms::isLoaded(u"frmask"_qs));
        dialog->setNumber(7);
        int left = 0;
        dialog.form().control<controls::TextField>(u"txtRate"_qs)->left.connect([&] { ++left; });
        whenShown(u"frmAsk"_qs, [this] {
            EXPECT_EQ(focusName(), u"txtRate"_qs);
            type(u"txtRate"_qs, u"5"_qs);
            key(Qt::Key_Escape);
        });
        dialog.form().showModal();
        // Cancelling is no leaving: nothing is checked or reformatted then.
        EXPECT_EQ(left, 0);
        EXPECT_EQ(dialog.form().control<controls::TextField>(u"txtRate"_qs)->text(), u"5"_qs);
        whenShown(u"frmAsk"_qs, [this] { form().close(); });
        dialog.form().showModal();
        EXPECT_EQ(log(), u"frmAsk number 7, frmAsk load, frmAsk activate, frmAsk cancel, "
                         u"frmAsk activate, frmAsk cancel"_qs);
        // Unloaded it loads afresh.
        whenShown(u"frmAsk"_qs, [this] {
            EXPECT_TRUE(form().unload());
            EXPECT_FALSE(Forms::isLoaded(u"frmAsk"_qs));
        });
        dialog.form().showModal();
        whenShown(u"frmAsk"_qs, [this] { form().hideModal(); });
        dialog.form().showModal();
        EXPECT_EQ(log(), u"frmAsk activate, frmAsk query, frmAsk load, frmAsk activate"_qs);
    }
    EXPECT_FALSE(Forms::isLoaded(u"frmAsk"_qs));
    // The document below isn't activated again.
    settle();
    EXPECT_EQ(log(), u"frmAsk deleted"_qs);
}

TEST_F(FormTest, EnterPressesWhatAPersonExpects) {
    open(u"frmOne"_qs);
    log();
    type(u"txtRate"_qs, u"5"_qs);
    key(Qt::Key_Return);
    // The field took its form first, and has the focus again.
    EXPECT_EQ(log(), u"frmOne save 5.00"_qs);
    EXPECT_EQ(focusName(), u"txtRate"_qs);
    type(u"txtNotes"_qs, u"a\nb"_qs);
    EXPECT_EQ(text(u"txtNotes"_qs), u"a\r\nb"_qs);
    EXPECT_EQ(log(), QString());
    go(u"cmdOther"_qs);
    key(Qt::Key_Return);
    EXPECT_EQ(log(), u"frmOne other"_qs);
    type(u"txtRate"_qs, u"7"_qs);
    key(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(log(), u"frmOne save 7.00"_qs);
    control<QWidget>(u"cmdSave"_qs)->setEnabled(false);
    go(u"txtRate"_qs);
    key(Qt::Key_Return);
    EXPECT_EQ(log(), QString());
    script.cancel = [](Form&) {};
    type(u"txtRate"_qs, u"x"_qs);
    key(Qt::Key_Escape);
    EXPECT_EQ(log(), u"frmOne cancel"_qs);
    EXPECT_EQ(text(u"txtRate"_qs), u"x"_qs);
}

TEST_F(FormTest, WhatAHandlerThrowsNeverCrossesALoop) {
    open(u"frmOne"_qs);
    script.save = [](Form&) { throw jet::Error(3075, u"Syntax error"_qs); };
    expectRunTimeError(3075);
    press(u"cmdSave"_qs);
    EXPECT_EQ(lastRunTimeError, u"Syntax error"_qs);
    script.save = [](Form&) { throw values::Overflow(); };
    expectRunTimeError(6);
    press(u"cmdSave"_qs);
    EXPECT_EQ(lastRunTimeError, u"Overflow"_qs);
    // In a dialog on a dialog: the loops go on, and the handlers below end as they should.
    int depth = 0;
    script.save = [&](Form& form) {
        if (form.name() == u"frmAsk") {
            throw std::runtime_error("deep");
        }
        Forms::showModal(u"frmAsk"_qs);
        ++depth;
    };
    whenShown(u"frmAsk"_qs, [this] {
        press(u"cmdSave"_qs);
        press(u"cmdCancel"_qs);
    });
    expectRunTimeError(1000);
    expectEndOfProcess(); // a fault of the program itself
    press(u"cmdSave"_qs);
    EXPECT_EQ(depth, 1);
}

TEST_F(FormTest, WhatATimerThrowsIsToldToo) {
    expectRunTimeError(3075);
    QTimer::singleShot(0, qApp, [] { throw jet::Error(3075, u"Syntax."_qs); });
    settle();
}

TEST_F(FormTest, WhenTheDatabaseCantBeWorkedWithAHandlerIsTriedAgainAndTheEntryStays) {
    open(u"frmOne"_qs);
    type(u"txtRate"_qs, u"12"_qs);
    int tries = 0;
    script.save = [&](Form&) {
        if (++tries < 3)
            throw jet::Error(jet::errors::connectionFailed, u"The server closed the line."_qs,
                             jet::Failure::ConnectionLost);
    };
    const QString lost = u"The database server can't be reached."_qs;
    expectBoxContaining(lost, Answer::Retry);
    expectBoxContaining(lost, Answer::Retry);
    press(u"cmdSave"_qs);
    EXPECT_EQ(tries, 3);

    const std::pair<jet::Failure, QString> kinds[] = {
        {jet::Failure::LockNotHad, u"Another station is writing"_qs},
        {jet::Failure::DiskFull, u"The disk of the database is full."_qs},
        {jet::Failure::ReadOnly, u"The database can be read only."_qs},
        {jet::Failure::FileGone, u"The database can't be found or opened."_qs}};
    for (const auto& [kind, told] : kinds) {
        script.save = [kind = kind](Form&) {
            throw jet::Error(jet::errors::other, u"no"_qs, kind);
        };
        expectBoxContaining(told, Answer::Close);
        press(u"cmdSave"_qs);
    }
    EXPECT_EQ(text(u"txtRate"_qs), u"12.00"_qs);
    EXPECT_TRUE(Forms::isLoaded(u"frmOne"_qs));
}

TEST_F(FormTest, BusyPointersStepAsideForDialogsAndBoxes) {
    const auto shape = [] {
        return QApplication::overrideCursor() ? int(QApplication::overrideCursor()->shape()) : -1;
    };
    BusyPointer hourglass;
    EXPECT_EQ(shape(), Qt::WaitCursor);
    seams().msgBox = [&](const QString&, Buttons, Icon, const QString&, Answer) {
        EXPECT_EQ(shape(), -1);
        return Answer::Ok;
    };
    MsgBox(u"Stop"_qs);
    EXPECT_EQ(shape(), Qt::WaitCursor);
    whenShown(u"frmAsk"_qs, [&] {
        EXPECT_EQ(shape(), -1);
        {
            BusyPointer report(BusyPointer::ArrowAndHourglass);
            EXPECT_EQ(shape(), Qt::BusyCursor);
            hourglass.reset();
            EXPECT_EQ(shape(), Qt::BusyCursor);
        }
        EXPECT_EQ(shape(), -1);
        press(u"cmdCancel"_qs);
    });
    Forms::showModal(u"frmAsk"_qs);
    EXPECT_EQ(shape(), -1);
}

TEST_F(FormTest, AComplaintLeadsToItsFieldOnWhateverTab) {
    open(u"frmOne"_qs);
    script.save = [](Form& form) {
        dynamic_cast<TriedForm&>(form).complainAbout(u"Far is missing."_qs, u"txtFar"_qs);
    };
    expectBox(u"Far is missing."_qs, Answer::Ok, u"Mirsa"_qs, Buttons::Ok, Icon::Exclamation);
    go(u"txtRate"_qs);
    key(Qt::Key_Return);
    EXPECT_EQ(focusName(), u"txtFar"_qs);
    EXPECT_TRUE(control<QWidget>(u"txtFar"_qs)->isVisible());
}

TEST_F(FormTest, KeepsItsSizeAndPlaceForTheNextTime) {
    auto* one = open(u"frmOne"_qs);
    one->parentWidget()->setGeometry(31, 47, 640, 410);
    settle();
    const QSize size = one->size();
    one->unload();
    settle();
    one = open(u"frmOne"_qs);
    EXPECT_EQ(one->size(), size);
    EXPECT_EQ(one->parentWidget()->pos(), QPoint(31, 47));
    one->parentWidget()->showMaximized();
    settle();
    one->unload();
    settle();
    one = open(u"frmOne"_qs);
    EXPECT_TRUE(one->parentWidget()->isMaximized());
    one->parentWidget()->showNormal();
}

TEST_F(FormTest, BeforeADeletionEnterSaysNo) {
    Answer offered{};
    screen::seams().msgBox = [&](const QString&, Buttons, Icon, const QString&, Answer first) {
        offered = first;
        return first;
    };
    EXPECT_FALSE(screen::confirmDeletion(u"Delete this item?"_qs));
    EXPECT_EQ(offered, Answer::No);
    EXPECT_FALSE(screen::confirmDeletion(u"Delete?"_qs, {}, Icon::Question, Buttons::OkCancel));
    EXPECT_EQ(offered, Answer::Cancel);
}

} // namespace
