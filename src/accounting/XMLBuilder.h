#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace accounting {

/// Builds the text of a message for QuickBooks line by line. Lines end with CR LF, an indent is
/// four blanks a level.
class XMLBuilder {
  public:
    const QString& GetXML() const { return m_text; }
    /// Clears the text and goes back to level 0.
    void init();
    /// A tag with no indent that leaves the level as it is.
    void AddTagTopLevel(const QString& tag);
    /// Opens an aggregate: the level rises.
    void AddAggregateTagOnly(const QString& tag);
    /// The same with `count` attributes, whose values are escaped.
    void AddAggregate(const QString& tag, int count, const QStringList& names,
                      const QStringList& attributeValues);
    /// Closes an aggregate: the level falls, and may become negative, which indents nothing.
    void AddEndAggregate(const QString& tag);
    void AddElement(const QString& tag, const QString& value);

  private:
    void indent();
    static bool needsEscaping(const QString& value);
    /// The five characters of markup by name. Letters beyond ASCII go out as numeric references,
    /// which are understood whatever the code page of the desk.
    static QString escaped(const QString& value);

    QString m_text;
    std::int16_t m_level = 0;
};

} // namespace accounting
