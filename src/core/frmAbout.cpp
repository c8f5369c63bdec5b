#include "core/frmAbout.h"

#include "core/MirsaMain.h"
#include "core/ToolIcons.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace core {

frmAbout::frmAbout() : Form(QString::fromLatin1(formName), u"About Mirsa"_s) {
    auto* layout = new QVBoxLayout(this);
    auto* across = new QHBoxLayout;
    layout->addLayout(across);
    auto* picture = new QLabel(this);
    picture->setPixmap(programIcon().pixmap(64, 64));
    across->addWidget(picture, 0, Qt::AlignTop);

    const jet::Database& database = MainDatabase();
    const auto line = [](const QString& text) { return text.toHtmlEscaped() + u"<br>"_s; };
    auto* text = screen::named(new QLabel(this), u"lblAbout"_s);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setText(u"<b>Mirsa Project Manager</b><br>"_s +
                  line(u"Version "_s + QCoreApplication::applicationVersion()) +
                  line(u"Signed in: "_s + shared().CurrentUserName) +
                  line(database.isServer() ? u"Database on a server (PostgreSQL)"_s
                                           : u"Database file "_s + database.name()) +
                  line(u"Program folder "_s + shared().ProgramFolder));
    text->setWordWrap(true);
    text->setMinimumWidth(360);
    across->addWidget(text, 1);

    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* ok = bar.button(u"cmdOK"_s, u"&OK"_s);
    on(ok, [this] { unload(); });
    setDefaultButton(ok);
    setCancelButton(ok);
}

} // namespace core
