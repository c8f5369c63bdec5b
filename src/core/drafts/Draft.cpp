#include "core/drafts/Draft.h"

#include "core/MirsaMain.h"
#include "core/keeping/Files.h"
#include "platform/jet/Location.h"
#include "platform/system/Remembered.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThreadPool>
#include <QUuid>

#include <algorithm>

namespace core {

namespace {

/// A line for each value with its name; lines of a list as their values, parted by tabs.
QString asWords(const QJsonObject& object) {
    QString text;
    const auto line = [&text](const QString& name, const QJsonValue& value) {
        if (const QString said = unpackedValue(value).toText(); !said.isEmpty())
            text += name + u": "_s + said + u'\n';
    };
    const QJsonArray names = object[u"columns"_s].toArray();
    const QJsonArray values = object[u"values"_s].toArray();
    if (!names.isEmpty() && object.contains(u"keys"_s)) {
        for (const QJsonValue row : values) {
            QStringList cells;
            const QJsonArray cellsOfRow = row.toArray();
            for (const QJsonValue cell : cellsOfRow)
                cells << unpackedValue(cell).toText();
            text += cells.join(u'\t') + u'\n';
        }
        return text;
    }
    for (qsizetype i = 0; i < std::min(names.size(), values.size()); ++i)
        line(names[i].toString(), values[i]);
    for (auto one = object.begin(); one != object.end(); ++one) {
        const QJsonObject inside = one.value().toObject();
        if (inside.isEmpty() || inside.contains(u"money"_s) || inside.contains(u"date"_s))
            line(one.key(), one.value());
        else
            text += asWords(inside);
    }
    return text;
}

} // namespace

QString Draft::question() const {
    const QString when = at.date() == values::today() ? u"at "_s + at.toString(u"hh:mm"_s)
                                                      : u"on "_s + at.toString(u"M/d/yyyy"_s) +
                                                            u" at "_s + at.toString(u"hh:mm"_s);
    return (key == 0 ? u"A new "_s + record + u" was being entered "_s
                     : record + u' ' + QString::number(key) + u" was being edited "_s) +
           when + u". Open the draft?"_s;
}

QString Draft::inWords() const {
    QJsonObject said = entry;
    said.remove(u"before"_s);
    return asWords(said).trimmed();
}

QJsonValue packedValue(const jet::Value& value) {
    using Kind = jet::Value::Kind;
    switch (value.kind()) {
    case Kind::Null:
        return QJsonValue::Null;
    case Kind::Boolean:
        return value.toBool();
    case Kind::Integer:
        return value.toInteger();
    case Kind::Double:
        return value.toDouble();
    case Kind::Money:
        return QJsonObject{{u"money"_s, value.toText()}};
    case Kind::Text:
        return value.toText();
    case Kind::Date:
        return QJsonObject{{u"date"_s, value.toDateTime()->toString(Qt::ISODate)}};
    }
    return QJsonValue::Null;
}

jet::Value unpackedValue(const QJsonValue& packed) {
    switch (packed.type()) {
    case QJsonValue::Bool:
        return packed.toBool();
    case QJsonValue::Double:
        return packed.toDouble() == static_cast<double>(packed.toInteger())
                   ? jet::Value(packed.toInteger())
                   : jet::Value(packed.toDouble());
    case QJsonValue::String:
        return packed.toString();
    case QJsonValue::Object: {
        const QJsonObject kept = packed.toObject();
        if (kept.contains(u"money"_s)) {
            try {
                return values::Currency::fromText(kept[u"money"_s].toString());
            } catch (const std::exception&) {
                return {}; // the file was damaged
            }
        }
        QDateTime moment = QDateTime::fromString(kept[u"date"_s].toString(), Qt::ISODate);
        moment.setTimeSpec(Qt::UTC);
        return moment.isValid() ? jet::Value(moment) : jet::Value();
    }
    default:
        return {};
    }
}

namespace drafts {

namespace {

QString ending() {
    return u".draft"_s;
}

QString allFolders() {
    return platform::rememberedFolder() + u"/drafts"_s;
}

QString userName() {
    return shared().CurrentUserName.trimmed().toCaseFolded();
}

QString databaseName() {
    const QString& path = shared().DatabasePath;
    const QString file = QFileInfo(path).canonicalFilePath();
    return file.isEmpty() ? jet::withoutPassword(path) : file;
}

/// The folder of this run, and the thread that writes into it.
class Run {
  public:
    Run() { m_thread.setMaxThreadCount(1); }
    ~Run() {
        finish();
        drop();
    }
    void start(std::function<void()> work) { m_thread.start(std::move(work)); }
    void finish() { m_thread.waitForDone(); }

    // On the thread.

    /// Empty where none can be made.
    QString folder(const QString& inside) {
        if (m_lock && QFileInfo(m_folder).absolutePath() == inside && QFileInfo::exists(m_folder))
            return m_folder;
        drop();
        m_folder = inside + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces);
        try {
            m_lock = std::make_unique<keeping::FolderLock>(m_folder);
        } catch (const keeping::Refusal&) {
            return {};
        }
        QFile::setPermissions(m_folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return m_folder;
    }
    QString folder() const { return m_folder; }
    void removeFile(const QString& name) {
        if (!m_folder.isEmpty())
            QFile::remove(m_folder + u'/' + name);
    }

  private:
    void drop() {
        m_lock.reset();
        if (!m_folder.isEmpty())
            QDir().rmdir(m_folder); // one with drafts stays
    }
    QThreadPool m_thread;
    QString m_folder;
    std::unique_ptr<keeping::FolderLock> m_lock;
};

Run& run() {
    static Run made;
    return made;
}

QByteArray packed(const Draft& draft, const QString& user, const QString& database) {
    return QJsonDocument(QJsonObject{{u"user"_s, user},
                                     {u"database"_s, database},
                                     {u"form"_s, draft.form},
                                     {u"record"_s, draft.record},
                                     {u"key"_s, draft.key},
                                     {u"at"_s, draft.at.toString(Qt::ISODate)},
                                     {u"saving"_s, draft.saving},
                                     {u"entry"_s, draft.entry}})
        .toJson(QJsonDocument::Compact);
}

std::optional<Draft> unpacked(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject kept = QJsonDocument::fromJson(file.readAll()).object();
    if (kept[u"user"_s] != userName() || kept[u"database"_s] != databaseName())
        return std::nullopt;
    return Draft{kept[u"form"_s].toString(),
                 kept[u"record"_s].toString(),
                 kept[u"key"_s].toInteger(),
                 QDateTime::fromString(kept[u"at"_s].toString(), Qt::ISODate),
                 kept[u"saving"_s].toBool(),
                 kept[u"entry"_s].toObject(),
                 path};
}

} // namespace

void write(const Draft& draft) {
    run().start([draft, user = userName(), database = databaseName(), inside = allFolders()] {
        const QString folder = run().folder(inside);
        if (folder.isEmpty())
            return;
        try {
            keeping::writeWhole(folder + u'/' + draft.form + ending(),
                                packed(draft, user, database), true);
        } catch (const keeping::Refusal& refusal) {
            qWarning("%s", refusal.what());
        }
    });
}

void writeNow(const Draft& draft) {
    write(draft);
    finish();
}

void remove(const QString& form) {
    run().start([form] { run().removeFile(form + ending()); });
}

void finish() {
    run().finish();
}

struct Left::Folder {
    explicit Folder(const QString& path) : path(path), lock(path) {}
    QString path;
    keeping::FolderLock lock;
};

Left::Left() {
    finish();
    const auto folders = QDir(allFolders()).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo& one : folders) {
        if (one.absoluteFilePath() == run().folder())
            continue;
        try {
            m_folders.push_back(std::make_unique<Folder>(one.absoluteFilePath()));
        } catch (const keeping::Refusal&) {
            continue; // of a run that goes on
        }
        const QDir inside(one.absoluteFilePath());
        const auto unfinished =
            inside.entryInfoList({keeping::unfinishedName(u"*"_s)}, QDir::Files);
        for (const QFileInfo& file : unfinished)
            QFile::remove(file.absoluteFilePath());
        const auto files = inside.entryInfoList({u'*' + ending()}, QDir::Files);
        for (const QFileInfo& file : files) {
            if (auto draft = unpacked(file.absoluteFilePath()))
                m_drafts.push_back(std::move(*draft));
        }
    }
    std::stable_sort(m_drafts.begin(), m_drafts.end(),
                     [](const Draft& a, const Draft& b) { return a.at < b.at; });
}

Left::~Left() {
    for (auto& folder : m_folders) {
        const QString path = folder->path;
        folder.reset();
        QDir().rmdir(path); // one with drafts stays
    }
}

void Left::remove(const Draft& draft) {
    QFile::remove(draft.file);
}

} // namespace drafts

} // namespace core
