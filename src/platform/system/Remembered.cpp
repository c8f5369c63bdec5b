#include "platform/system/Remembered.h"

#include "platform/values/Literals.h"

#include <QFileInfo>
#include <QSettings>

#include <memory>

namespace platform {

namespace {

struct Store {
    std::unique_ptr<QSettings> settings;
    QString file;
    QString person;
};

Store& store() {
    static Store made;
    return made;
}

QSettings& settings() {
    Store& kept = store();
    if (!kept.settings) {
        kept.settings =
            kept.file.isEmpty()
                ? std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                              u"Mirsa"_s, u"Mirsa"_s)
                : std::make_unique<QSettings>(kept.file, QSettings::IniFormat);
    }
    return *kept.settings;
}

QString pathOf(const QString& key, Whose whose) {
    if (whose == Whose::Station)
        return u"station/"_s + key;
    // A slash in the name would make a group of its own.
    QString person = store().person;
    person.replace(u'/', u'_').replace(u'\\', u'_');
    return u"people/"_s + (person.isEmpty() ? u"nobody"_s : person) + u'/' + key;
}

} // namespace

QVariant remembered(const QString& key, const QVariant& fallback, Whose whose) {
    return settings().value(pathOf(key, whose), fallback);
}

void remember(const QString& key, const QVariant& value, Whose whose) {
    settings().setValue(pathOf(key, whose), value);
}

QString rememberedFolder() {
    return QFileInfo(settings().fileName()).absolutePath();
}

void setPerson(const QString& name) {
    store().person = name.trimmed().toCaseFolded();
}

void writeRemembered() {
    if (store().settings)
        store().settings->sync();
}

void keepRememberedIn(const QString& file) {
    store().settings.reset();
    store().file = file;
}

} // namespace platform
