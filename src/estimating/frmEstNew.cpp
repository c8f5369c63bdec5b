#include "estimating/frmEstNew.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace estimating {

frmEstNew::frmEstNew() : Form(QString::fromLatin1(formName), u"New Estimate"_s) {
    auto* outside = new QVBoxLayout(this);
    QGroupBox* ways = screen::frame(this, outside, u"fraWays"_s, u"Start the new estimate"_s);
    auto* wayLayout = new QVBoxLayout(ways);
    const char16_t* captions[] = {u"&Use a Default Set", u"&Select Operations to Use",
                                  u"&Copy Current Record", u"Copy a Job's Operations"};
    for (int i = 0; i < 4; ++i) {
        m_options[i] = screen::named(new QRadioButton(QString::fromUtf16(captions[i]), ways),
                                     u"Option"_s + QString::number(i + 1));
        wayLayout->addWidget(m_options[i]);
        on(m_options[i], &frmEstNew::option_Click);
    }
    txtJobno = screen::named(new controls::DataCombo(ways), u"txtJobno"_s, u"Job No."_s);
    txtJobno->setKeyFilter(values::keys::digits());
    txtJobno->setLimit(9);
    wayLayout->addWidget(txtJobno);

    QGroupBox* with = screen::frame(this, outside, u"fraWith"_s, u"With"_s);
    auto* withLayout = new QVBoxLayout(with);
    const auto check = [&](const char16_t* name, const char16_t* caption) {
        auto* box = screen::named(new QCheckBox(QString::fromUtf16(caption), with),
                                  QString::fromUtf16(name));
        withLayout->addWidget(box);
        return box;
    };
    chkCarryCus = check(u"chkCarryCus", u"Carry Forward Customer Info");
    chkNotes = check(u"chkNotes", u"Carry Forward Operation Notes");
    chkDefault = check(u"chkDefault", u"Use Default Notes");

    on(addOkCancel(outside), &frmEstNew::cmdOK_Click);
}

std::optional<NewEstimate> frmEstNew::choose(bool hasCurrent) {
    // The latest jobs to choose from; any other number is typed.
    txtJobno->setRows(
        core::MainDatabase().openRecordset(u"SELECT TOP 200 JobNo FROM Job ORDER BY JobNo DESC"_s,
                                           jet::RecordsetType::Snapshot),
        u"JobNo"_s, u"JobNo"_s);
    txtJobno->setText(QString());
    m_options[2]->setEnabled(hasCurrent);
    m_options[0]->setChecked(true);
    m_options[0]->setFocus();
    option_Click();
    showModal();
    return m_result;
}

NewEstimate::Way frmEstNew::way() const {
    using Way = NewEstimate::Way;
    constexpr Way ways[] = {Way::DefaultSet, Way::SelectOperations, Way::CopyCurrent, Way::CopyJob};
    for (int i = 0; i < 4; ++i) {
        if (m_options[i]->isChecked())
            return ways[i];
    }
    return Way::DefaultSet;
}

void frmEstNew::option_Click() {
    using Way = NewEstimate::Way;
    const Way chosen = way();
    const bool copies = chosen == Way::CopyCurrent || chosen == Way::CopyJob;
    chkNotes->setEnabled(copies);
    chkDefault->setEnabled(chosen != Way::SelectOperations);
    txtJobno->setEnabled(chosen == Way::CopyJob);
}

void frmEstNew::cmdOK_Click() {
    if (way() == NewEstimate::Way::CopyJob && txtJobno->text().trimmed().isEmpty()) {
        complain(u"Please enter a Job No."_s, txtJobno);
        return;
    }
    m_result =
        NewEstimate{way(), chkCarryCus->isChecked(), chkNotes->isEnabled() && chkNotes->isChecked(),
                    chkDefault->isEnabled() && chkDefault->isChecked(), txtJobno->text().trimmed()};
    hideModal();
}

} // namespace estimating
