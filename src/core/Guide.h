#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace core {

/// The pages of the user's guide: which one tells of a screen, and which hold a text.
class Guide {
  public:
    struct Page {
        QString file;  ///< "frmEstimate.html"
        QString title; ///< "Estimates"
        QString text;  ///< without marks, white space folded
        QStringList screens;
    };
    struct Hit {
        QString file;
        QString title;
        QString excerpt; ///< the words around the first place; empty where only the title has it
    };

    /// Reads the pages of a folder; none where there is no such folder.
    explicit Guide(const QString& folder);

    const QString& folder() const { return m_folder; }
    const std::vector<Page>& pages() const { return m_pages; }
    /// File of the page about a screen: the one of its name, else one that names it among its
    /// screens; empty if there is none.
    QString pageOf(const QString& screen) const;
    /// The pages that hold all the words of `text`, without regard to case; those that have them in
    /// their titles first.
    std::vector<Hit> search(const QString& text) const;

  private:
    QString m_folder;
    std::vector<Page> m_pages;
};

} // namespace core
