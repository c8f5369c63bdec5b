#include "accounting/DisplayXML.h"

#include "platform/screen/Layout.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace accounting {

DisplayXML::DisplayXML() : Form(QString::fromLatin1(formName), u"QuickBooks Message"_s) {
    auto* layout = new QVBoxLayout(this);
    txtXML = screen::named(new QPlainTextEdit(this), u"txtXML"_s, u"Message"_s);
    txtXML->setReadOnly(true);
    txtXML->setTabChangesFocus(true);
    txtXML->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtXML->setMinimumSize(640, 400);
    layout->addWidget(txtXML, 1);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* Comm_Exit = bar.button(u"Comm_Exit"_s, u"&Close"_s);
    on(Comm_Exit, [this] { unload(); });
    setCancelButton(Comm_Exit);
}

void DisplayXML::ShowMessage(const QString& text) {
    txtXML->setPlainText(text);
    showModal();
}

} // namespace accounting
