#pragma once

#include "core/records/DocumentFields.h"
#include "core/records/RecordModule.h"

#include <optional>
#include <utility>

namespace core {

/// A record module whose record is a plain struct: header, lines, and whatever belongs to them. The
/// screen shows the struct and is never asked for what it can't know (figures that are hidden, or
/// shown rounded). A member derives from DocumentOf, which holds the struct.
///
/// What two stations change in one record is joined by the save; where both changed the same thing,
/// the user is told both values and says which one stands, or has the lines loaded again and keeps
/// his header. A save whose end wasn't heard, because the connection went, is looked for before it
/// is done once more.
class DocumentModule : public RecordModule {
  public:
    using RecordModule::RecordModule;
    void ShowModuleMode(Mode mode) override;
    void cmdEdit_Click() override;
    void cmdDelete_Click() override;

  protected:
    /// Takes the record from its row and shows it, or an empty one.
    virtual void takeRecord(const jet::Recordset* row) = 0;
    /// What stands on the screen is what the entry begins with.
    virtual void keepBefore() = 0;
    /// Writes what stands on the screen; `key` is 0 for a new record.
    virtual SaveOutcome save(qint64 key, const QStringList& settled) = 0;
    /// The number that the last save() was writing; 0 if it came to nothing before.
    virtual qint64 writtenKey() const = 0;
    /// Whether what the last save() was writing is stored.
    virtual bool isWritten(bool added) = 0;
    virtual void deleteDocument(qint64 key) = 0;
    /// Loads the lines as they are stored now; the entry then begins with them. The header stays.
    virtual void reloadLines() {}
    virtual void tellTooLarge();
    /// The last record of the table was deleted.
    virtual void afterLastDelete() { ShowModuleMode(Mode::Add); }

    void clearFields() override;
    void showRecord() override;
    bool writeRecord(bool adding, qint64& key) override;
    void afterSave(qint64 key, bool adding) override;

    static void tell(const jet::Error& error);

  private:
    bool settle(const ChangedElsewhere& conflict, QStringList& settled);
    bool foundWritten(bool added);
    bool m_unsure = false; ///< whether the last save committed
};

/// A document module, or one of its families, on the struct of its document. Doc has a documentNo,
/// which a save sets before it commits.
template <class Doc, class Base = DocumentModule>
class DocumentOf : public Base {
  public:
    using Base::Base;

  protected:
    /// What stands on the screen.
    virtual Doc document() = 0;
    /// The document as it is stored.
    virtual std::optional<Doc> load(qint64 key) = 0;
    /// Whether they are the same, as far as people enter them.
    virtual bool isSame(const Doc& a, const Doc& b) const = 0;
    /// Writes it over the stored one, or as a new one (key 0) without `before`.
    virtual SaveOutcome store(qint64 key, Doc& document, const Doc* before,
                              const QStringList& settled) = 0;

    /// For a draft: without what its user may not see and has not changed since `before`.
    virtual QJsonObject pack(const Doc& document, const Doc* before) const = 0;
    /// What was packed goes into what is stored, or into a new document.
    virtual Doc unpack(const QJsonObject& packed, const Doc& stored) const = 0;
    /// Shows it as what was typed.
    virtual void showEntry(const Doc& document) = 0;

    QJsonObject packedEntry() override {
        QJsonObject entry = Base::packedEntry();
        const Doc now = document();
        if (this->isEditing()) {
            entry[u"before"_s] = m_packedBefore;
            entry[u"now"_s] = pack(now, &m_before);
        } else {
            entry[u"now"_s] = pack(now, nullptr);
        }
        return entry;
    }
    void takeEntry(const QJsonObject& entry) override {
        // The entry goes on from where it began, so that the save joins what others stored since.
        const Doc stored = document();
        if (this->isEditing()) {
            m_packedBefore = entry[u"before"_s].toObject();
            m_before = unpack(m_packedBefore, stored);
        }
        showEntry(unpack(entry[u"now"_s].toObject(), stored));
        Base::takeEntry(entry);
    }
    bool holdsEntry(const QJsonObject& entry, const jet::Recordset& row) override {
        if (!Base::holdsEntry(entry, row))
            return false;
        const qint64 key = row[this->descriptor().keyColumn].toLong();
        const auto stored = load(key);
        return stored && isSame(unpack(entry[u"now"_s].toObject(), *stored), *stored);
    }

    void keepBefore() override {
        m_before = document();
        m_packedBefore = pack(m_before, &m_before);
    }
    SaveOutcome save(qint64 key, const QStringList& settled) override {
        m_written = document();
        m_written.documentNo = 0;
        return store(key, m_written, key == 0 ? nullptr : &m_before, settled);
    }
    qint64 writtenKey() const override { return m_written.documentNo; }
    bool isWritten(bool added) override {
        // The number of a new document was given to this save alone.
        const auto stored = load(m_written.documentNo);
        return stored && (added || isSame(m_written, *stored));
    }

    Doc m_before; ///< what the entry began with

  private:
    QJsonObject m_packedBefore;
    Doc m_written; ///< by the last save
};

} // namespace core
