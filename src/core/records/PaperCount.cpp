#include "core/records/PaperCount.h"

#include "core/MirsaMain.h"
#include "core/Shell.h"
#include "core/papers/PaperScreen.h"
#include "core/papers/Papers.h"
#include "platform/screen/Form.h"

namespace core {

QString papersOf(const QString& screen, qint64 key) {
    const PaperKind* kind = paperKindOf(screen);
    if (!kind || !keepsPapers(MainDatabase()))
        return {};
    QStringList seen;
    for (const PaperKind& other : paperKinds())
        if (!shell() || shell()->mayOpen(other.screen))
            seen += other.name;
    return papersSelect(*kind, key, seen);
}

PaperCount::PaperCount(screen::Form& form)
    : m_form(form), m_background(MainDatabase().name(), &m_here) {}

void PaperCount::show(qint64 key) {
    if (key != m_key)
        m_form.setProperty(papersProperty, 0);
    m_key = key;
    const QString select = key == 0 ? QString() : papersOf(m_form.name(), key);
    if (select.isEmpty())
        return;
    auto count = std::make_shared<int>(0);
    m_background.run(
        [select, key, count, kind = paperKindOf(m_form.name())](jet::Database& database,
                                                                const Background&) {
            *count = static_cast<int>(readPapers(database, select, *kind, key).size());
        },
        [this, key, count](const QString& failure) {
            if (failure.isEmpty() && key == m_key)
                m_form.setProperty(papersProperty, *count);
        });
}

} // namespace core
