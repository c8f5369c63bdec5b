#pragma once

#include "estimating/Routing.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

#include <QWidget>

#include <vector>

class QCheckBox;

namespace estimating {

/// Two lists side by side: the catalogue's operations, and those that were picked, in their order.
class OperationPicker : public QWidget {
  public:
    struct Entry {
        qint64 operNo = 0;
        QString description;
        bool contractor = false;
        bool hasNote = false;
        bool useNote = false;
    };

    /// `withNotes`: whether each picked operation says if its default note is wanted.
    OperationPicker(screen::Form& form, bool withNotes);

    /// Fills the lists from selects that give rows of Operation; an empty select leaves the list
    /// of picked ones empty.
    void load(jet::Database& database, const QString& available, const QString& picked = {});
    const std::vector<Entry>& picked() const { return m_picked; }

  private:
    void add();
    void remove();
    void move(int step);
    void useNote();
    void showLists();
    void showChosen();
    void moveAcross(controls::ListView* list, std::vector<Entry>& from, std::vector<Entry>& to);
    static void show(controls::ListView* list, const std::vector<Entry>& entries, bool withNotes);

    screen::Form& m_form;
    bool m_withNotes;
    controls::ListView* lvwAvail;
    controls::ListView* lvwSel;
    QCheckBox* Check1;
    std::vector<Entry> m_available;
    std::vector<Entry> m_picked;
};

} // namespace estimating
