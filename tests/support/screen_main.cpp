#include "platform/screen/Application.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFont>
#include <QStyleFactory>
#include <QTemporaryDir>

namespace {

QtMessageHandler usual;

/// Leaves out what the display-less platform says on every window.
void say(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith(u"This plugin does not support"))
        usual(type, context, text);
}

} // namespace

int main(int argc, char** argv) {
    usual = qInstallMessageHandler(say);
    ::testing::InitGoogleTest(&argc, argv);
    QTemporaryDir folder;
    const QString screens = folder.filePath(u"screens.json"_s);
    QFile file(screens);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(R"({"screens": [{"name": "desk", "x": 0, "y": 0, "width": 1280, "height": 800,
                      "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
        file.close();
    }
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.isEmpty() || platform == "offscreen")
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.toUtf8());
    if (qgetenv("XDG_RUNTIME_DIR").isEmpty())
        qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());

    const screen::Application application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setFont(QFont(u"DejaVu Sans"_s, 9));
    return RUN_ALL_TESTS();
}
