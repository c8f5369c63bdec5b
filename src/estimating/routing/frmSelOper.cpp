#include "estimating/routing/frmSelOper.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace estimating {

frmSelOper::frmSelOper() : Form(QString::fromLatin1(formName), u"Select Operations"_s) {
    auto* outside = new QVBoxLayout(this);
    m_picker = new OperationPicker(*this, true);
    outside->addWidget(m_picker, 1);
    QPushButton* cmdOK = addOkCancel(outside);
    on(cmdOK, [this] {
        m_ok = true;
        hideModal();
    });
    resize(860, 520);
}

void frmSelOper::Form_Load() {
    m_picker->load(core::MainDatabase(), u"SELECT * FROM Operation WHERE OperType in ('I','C') "
                                         "ORDER BY Description"_s);
}

std::optional<std::vector<ChosenOperation>> frmSelOper::choose() {
    showModal();
    if (!m_ok)
        return std::nullopt;
    std::vector<ChosenOperation> chosen;
    for (const OperationPicker::Entry& entry : m_picker->picked())
        chosen.push_back({entry.operNo, entry.useNote});
    return chosen;
}

} // namespace estimating
