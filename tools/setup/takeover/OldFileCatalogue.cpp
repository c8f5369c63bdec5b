#include "setup/takeover/OldFileAccess.h"

#include "platform/values/Literals.h"

#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace takeover {

namespace {

bool isKnown(int type) {
    switch (type) {
    case MDB_BOOL:
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
    case MDB_MONEY:
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_DATETIME:
    case MDB_BINARY:
    case MDB_TEXT:
    case MDB_OLE:
    case MDB_MEMO:
    case MDB_REPID:
    case MDB_NUMERIC:
        return true;
    default:
        return false;
    }
}

/// The last number that a counter gave stands in the table's first page.
qint64 lastGiven(MdbHandle* handle, const MdbCatalogEntry* entry) {
    if (mdb_read_pg(handle, entry->table_pg) == 0)
        return 0;
    return static_cast<qint32>(mdb_get_int32(handle->pg_buf, IS_JET3(handle) ? 16 : 20));
}

QJsonObject tableObject(MdbHandle* handle, MdbCatalogEntry* entry) {
    QJsonObject object{{u"name"_s, QString::fromUtf8(entry->object_name)}};
    const TableOfFile table(entry);
    if (!table) {
        object[u"problem"_s] = u"its definition is damaged"_s;
        return object;
    }
    QJsonArray columns;
    bool counted = false;
    for (unsigned i = 0; i < table.definition()->num_cols; ++i) {
        const MdbColumn* column = table.column(i);
        const bool counter = column->is_long_auto != 0;
        counted = counted || counter;
        columns.append(
            QJsonObject{{u"name"_s, QString::fromUtf8(column->name)},
                        {u"type"_s, column->col_type},
                        {u"width"_s, IS_JET3(handle) ? column->col_size : column->col_size / 2},
                        {u"counter"_s, counter}});
    }
    object[u"columns"_s] = columns;
    object[u"rows"_s] = static_cast<qint64>(table.definition()->num_rows);
    object[u"given"_s] = counted ? lastGiven(handle, entry) : 0;
    return object;
}

} // namespace

OpenOldFile::OpenOldFile(const QString& path) {
    // They would change what is read, or even which file.
    for (const char* variable : {"MDBICONV", "MDB_JET3_CHARSET", "MDBPATH", "MDBOPTS"})
        qunsetenv(variable);
    m_handle = mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS);
    m_catalogued = m_handle != nullptr && mdb_read_catalog(m_handle, MDB_ANY) != nullptr;
}

OpenOldFile::~OpenOldFile() {
    if (m_handle)
        mdb_close(m_handle);
}

std::vector<MdbCatalogEntry*> OpenOldFile::entries() const {
    std::vector<MdbCatalogEntry*> all;
    for (unsigned i = 0; i < m_handle->num_catalog; ++i)
        all.push_back(static_cast<MdbCatalogEntry*>(g_ptr_array_index(m_handle->catalog, i)));
    return all;
}

TableOfFile::TableOfFile(const OpenOldFile& file, const QString& name) {
    if (!file)
        return;
    for (MdbCatalogEntry* entry : file.entries())
        if (entry->object_type == MDB_TABLE && QString::fromUtf8(entry->object_name) == name) {
            open(entry);
            return;
        }
}

TableOfFile::~TableOfFile() {
    if (m_definition)
        mdb_free_tabledef(m_definition);
}

void TableOfFile::open(MdbCatalogEntry* entry) {
    m_definition = mdb_read_table(entry);
    if (!m_definition || m_definition->map_sz < 1 || !m_definition->usage_map)
        return;
    m_sound = mdb_read_columns(m_definition) != nullptr && m_definition->num_cols > 0;
    for (unsigned i = 0; m_sound && i < m_definition->num_cols; ++i)
        m_sound =
            i < m_definition->columns->len && isKnown(column(i)->col_type) && *column(i)->name != 0;
}

int writeCatalogue(const QString& path, QIODevice& out) {
    const OpenOldFile file(path);
    if (!file)
        return 1;
    MdbHandle* handle = file.handle();
    QJsonArray tables, linked, damages;
    QMap<QString, int> others;
    qint64 told = -1;
    for (MdbCatalogEntry* entry : file.entries()) {
        if (entry->object_type == MDB_LINKED_TABLE)
            linked.append(QString::fromUtf8(entry->object_name));
        else if (entry->object_type == MDB_TABLE && mdb_is_user_table(entry))
            tables.append(tableObject(handle, entry));
        else if (entry->object_type == MDB_QUERY || entry->object_type == MDB_FORM ||
                 entry->object_type == MDB_REPORT || entry->object_type == MDB_MACRO ||
                 entry->object_type == MDB_MODULE)
            ++others[QString::fromUtf8(mdb_get_objtype_string(entry->object_type))];
        if (QByteArray(entry->object_name) == "MSysObjects")
            if (const TableOfFile objects(entry); objects)
                told = static_cast<qint64>(objects.definition()->num_rows);
    }
    if (told >= 0 && told != static_cast<qint64>(handle->num_catalog))
        damages.append(u"the catalogue tells of %1 objects, %2 could be read"_s.arg(told).arg(
            handle->num_catalog));
    if (told < 0)
        damages.append(u"the catalogue is damaged"_s);
    const qint64 page = handle->fmt->pg_size;
    if (const qint64 rest = QFileInfo(path).size() % page; rest != 0)
        damages.append(
            u"the file ends %1 bytes into its page %2: its end is missing"_s.arg(rest).arg(
                QFileInfo(path).size() / page));
    QJsonArray kinds;
    for (auto kind = others.cbegin(); kind != others.cend(); ++kind)
        kinds.append(u"%1 %2"_s.arg(kind.value()).arg(kind.key()));
    const QJsonObject whole{{u"format"_s, IS_JET3(handle) ? u"Jet 3"_s
                                          : handle->f->jet_version == MDB_VER_JET4
                                              ? u"Jet 4"_s
                                              : u"a format of 2007 or later"_s},
                            {u"codePage"_s, handle->f->code_page},
                            {u"tables"_s, tables},
                            {u"linked"_s, linked},
                            {u"others"_s, kinds},
                            {u"damages"_s, damages}};
    out.write(QJsonDocument(whole).toJson(QJsonDocument::Compact));
    return 0;
}

} // namespace takeover
