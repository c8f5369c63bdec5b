#include "support/Gallery.h"

#include "platform/controls/DataControl.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "support/ScreenFixture.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace screen;

namespace {

class GalleryTest : public testsupport::ScreenFixture {};

TEST_F(GalleryTest, AFormOfLayoutWordsIsSound) {
    auto* form = new Form(u"frmGallery"_qs, u"Gallery"_qs);
    auto* layout = new QVBoxLayout(form);
    auto* tabs = named(new QTabWidget(form), u"tabParts"_qs);
    layout->addWidget(tabs);
    auto* page = tab(tabs, u"Parts"_qs);
    Fields fields(page);
    fields.text(u"txtPart"_qs, u"&Part number:"_qs, {.limit = 30});
    fields.currency(u"txtPrice"_qs, u"P&rice each:"_qs);
    fields.date(u"txtDue"_qs, u"&Due:"_qs);
    fields.check(u"chkDone"_qs, u"&Finished and shipped"_qs);
    fields.nextColumn();
    fields.dataCombo(u"dbcUnit"_qs, u"&Unit:"_qs);
    fields.listCombo(u"cmbKind"_qs, u"&Kind of line:"_qs);
    fields.shown(u"lblTotal"_qs, u"Total:"_qs);
    fields.nextRow();
    fields.span(2).memo(u"txtNotes"_qs, u"N&otes:"_qs);
    auto* second = tab(tabs, u"Lines"_qs);
    auto* inner = new QVBoxLayout(second);
    auto* lines = named(new controls::Grid(second), u"sprLines"_qs, u"Lines"_qs);
    lines->setColumns(
        {{u"No"_qs, 1, controls::GridColumn::Kind::Number}, {u"A long description"_qs, 2}});
    inner->addWidget(lines);
    layout->addWidget(named(new controls::DataControl(form), u"datParts"_qs));
    ButtonBar bar(form, layout);
    bar.button(u"cmdSave"_qs, u"&Save"_qs);
    bar.button(u"cmdClose"_qs, u"Do&ne"_qs);
    showInShell(*form);
    EXPECT_EQ(testsupport::gallery(*form), QStringList());
}

TEST_F(GalleryTest, FaultsAreSeen) {
    auto* form = new Form(u"frmFaults"_qs, u"Faults"_qs);
    form->setMinimumSize(1300, 200);
    const auto put = [form](QWidget* widget, const QString& name, const QRect& place) {
        widget->setParent(form);
        widget->setObjectName(name);
        widget->setGeometry(place);
    };
    put(new QLabel(u"Much too long for its place"_qs), u"lblLong"_qs, {0, 0, 40, 20});
    put(new QPushButton(u"&Save"_qs), u"cmdSave"_qs, {0, 30, 80, 24});
    put(new QPushButton(u"&Seek"_qs), u"cmdSeek"_qs, {60, 30, 80, 24});
    put(new controls::TextField, {}, {0, 60, 80, 24});
    showInShell(*form);
    const QStringList found = testsupport::gallery(*form);
    const QString all = found.join(u'\n');
    for (const auto& fault : {u"clipped: lblLong"_qs, u"overlap: cmdSave and cmdSeek"_qs,
                              u"mnemonic: s on cmdSave and cmdSeek"_qs, u"unnamed: QLineEdit"_qs,
                              u"unspoken: QLineEdit"_qs, u"size: needs 13"_qs})
        EXPECT_TRUE(all.contains(fault)) << fault.toStdString() << " in\n" << all.toStdString();
}

} // namespace
