#include "jobs/frmJobNew.h"

#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace jobs {

frmJobNew::frmJobNew() : Form(QString::fromLatin1(formName), u"New Job"_s) {
    auto* outside = new QVBoxLayout(this);
    QGroupBox* ways = screen::frame(this, outside, u"fraWays"_s, u"Start the new job"_s);
    auto* wayLayout = new QVBoxLayout(ways);
    const char16_t* captions[] = {u"&Use a Default Set", u"&Select Operations to Use",
                                  u"&Copy Current Record"};
    for (int i = 0; i < 3; ++i) {
        m_options[i] = screen::named(new QRadioButton(QString::fromUtf16(captions[i]), ways),
                                     u"Option"_s + QString::number(i + 1));
        wayLayout->addWidget(m_options[i]);
        on(m_options[i], &frmJobNew::option_Click);
    }

    QGroupBox* with = screen::frame(this, outside, u"fraWith"_s, u"With"_s);
    auto* withLayout = new QVBoxLayout(with);
    const auto check = [&](const char16_t* name, const char16_t* caption) {
        auto* box = screen::named(new QCheckBox(QString::fromUtf16(caption), with),
                                  QString::fromUtf16(name));
        withLayout->addWidget(box);
        return box;
    };
    chkCarryCus = check(u"chkCarryCus", u"Carry &Forward Customer Info");
    chkNotes = check(u"chkNotes", u"Carry Forward &Operation Notes");
    chkDefault = check(u"chkDefault", u"Use &Default Operation Notes");
    chkCopyEstTimeAmt = check(u"chkCopyEstTimeAmt", u"&Include Estimated Time/Amt");

    on(addOkCancel(outside, u"OK"_s), &frmJobNew::cmdOK_Click);
}

std::optional<NewJob> frmJobNew::choose(bool hasCurrent) {
    m_options[2]->setEnabled(hasCurrent);
    m_options[0]->setChecked(true);
    m_options[0]->setFocus();
    option_Click();
    showModal();
    return m_result;
}

NewJob::Way frmJobNew::way() const {
    if (m_options[0]->isChecked())
        return NewJob::Way::DefaultSet;
    return m_options[1]->isChecked() ? NewJob::Way::SelectOperations : NewJob::Way::CopyCurrent;
}

void frmJobNew::option_Click() {
    const bool copies = way() == NewJob::Way::CopyCurrent;
    chkNotes->setEnabled(copies);
    chkCopyEstTimeAmt->setEnabled(copies);
    chkDefault->setEnabled(way() != NewJob::Way::SelectOperations);
}

void frmJobNew::cmdOK_Click() {
    const auto wanted = [](const QCheckBox* box) { return box->isEnabled() && box->isChecked(); };
    m_result = NewJob{way(), wanted(chkCarryCus), wanted(chkNotes), wanted(chkDefault),
                      wanted(chkCopyEstTimeAmt)};
    hideModal();
}

} // namespace jobs
