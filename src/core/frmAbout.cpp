#include "core/frmAbout.h"

#include "core/MirsaMain.h"
#include "core/ToolIcons.h"
#include "platform/screen/Layout.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace core {

frmAbout::frmAbout() : Form(QString::fromLatin1(formName), QStringLiteral("About Mirsa")) {
    auto* layout = new QVBoxLayout(this);
    auto* across = new QHBoxLayout;
    layout->addLayout(across);
    auto* picture = new QLabel(this);
    picture->setPixmap(programIcon().pixmap(64, 64));
    across->addWidget(picture, 0, Qt::AlignTop);

    const jet::Database& database = MainDatabase();
    const auto line = [](const QString& text) {
        return text.toHtmlEscaped() + QStringLiteral("<br>");
    };
    auto* text = screen::named(new QLabel(this), QStringLiteral("lblAbout"));
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setText(QStringLiteral("<b>Mirsa Project Manager</b><br>") +
                  line(QStringLiteral("Version ") + QCoreApplication::applicationVersion()) +
                  line(QStringLiteral("Signed in: ") + shared().CurrentUserName) +
                  line(database.isServer() ? QStringLiteral("Database on a server (PostgreSQL)")
                                           : QStringLiteral("Database file ") + database.name()) +
                  line(QStringLiteral("Program folder ") + shared().ProgramFolder));
    text->setWordWrap(true);
    text->setMinimumWidth(360);
    across->addWidget(text, 1);

    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* ok = bar.button(QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    on(ok, [this] { unload(); });
    setDefaultButton(ok);
    setCancelButton(ok);
}

} // namespace core
