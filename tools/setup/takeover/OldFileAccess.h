#pragma once

#include "setup/takeover/OldFile.h"

#include <glib.h>
#include <mdbtools.h>

#include <memory>

namespace takeover {

/// A file of the old system, open for reading through libmdb. For the reading process only.
class OpenOldFile {
  public:
    explicit OpenOldFile(const QString& path);
    ~OpenOldFile();
    OpenOldFile(const OpenOldFile&) = delete;
    OpenOldFile& operator=(const OpenOldFile&) = delete;
    explicit operator bool() const { return m_handle != nullptr && m_catalogued; }
    MdbHandle* handle() const { return m_handle; }
    std::vector<MdbCatalogEntry*> entries() const;

  private:
    MdbHandle* m_handle;
    bool m_catalogued = false;
};

/// A table of an open file with its columns; false where its definition is damaged.
class TableOfFile {
  public:
    TableOfFile(const OpenOldFile& file, const QString& name);
    explicit TableOfFile(MdbCatalogEntry* entry) { open(entry); }
    ~TableOfFile();
    TableOfFile(const TableOfFile&) = delete;
    TableOfFile& operator=(const TableOfFile&) = delete;
    explicit operator bool() const { return m_definition != nullptr && m_sound; }
    MdbTableDef* definition() const { return m_definition; }
    MdbColumn* column(unsigned i) const {
        return static_cast<MdbColumn*>(g_ptr_array_index(m_definition->columns, i));
    }

  private:
    void open(MdbCatalogEntry* entry);
    MdbTableDef* m_definition = nullptr;
    bool m_sound = false;
};

} // namespace takeover
