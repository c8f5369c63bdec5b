#include "reporting/QueryForm.h"

#include "core/MirsaMain.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace reporting {

using controls::DataCombo;
using controls::DateField;
using screen::named;

QueryForm::QueryForm(const QueryDescriptor& query)
    : Form(query.queryForm, query.queryCaption), m_query(query) {
    auto* outside = new QVBoxLayout(this);
    auto* inside = screen::frame(this, outside, u"fraCriteria"_s, u"Criteria"_s);
    auto* grid = new QGridLayout(inside);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    m_rows.resize(m_query.criteria.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        makeRow(i, grid);
    outside->addStretch();

    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* generate = bar.button(u"cmdGenerate"_s, u"&Generate Query"_s);
    QPushButton* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(generate, &QueryForm::cmdGenerate_Click);
    on(cancel, [this] { unload(); });
    setDefaultButton(generate);
    setCancelButton(cancel);
}

void QueryForm::makeRow(std::size_t index, QGridLayout* grid) {
    const Criterion& criterion = m_query.criteria[index];
    Row& row = m_rows[index];
    const int line = static_cast<int>(index);
    row.use = named(new QCheckBox(criterion.caption, this), criterion.useBox);
    grid->addWidget(row.use, line, 0);
    row.first = makeField(criterion, criterion.first, criterion.caption);
    grid->addWidget(row.first->widget(), line, 1);
    if (!criterion.rangeBox.isEmpty()) {
        row.range = named(new QCheckBox(u"to"_s, this), criterion.rangeBox,
                          criterion.caption + u" as a range"_s);
        row.range->setEnabled(false);
        grid->addWidget(row.range, line, 2);
        row.second = makeField(criterion, criterion.second, criterion.caption + u" to"_s);
        QSizePolicy keepsPlace = row.second->widget()->sizePolicy();
        keepsPlace.setRetainSizeWhenHidden(true);
        row.second->widget()->setSizePolicy(keepsPlace);
        row.second->widget()->hide();
        grid->addWidget(row.second->widget(), line, 3);
        on(row.range, &QCheckBox::toggled, [this, index] { rangeBoxChanged(index); });
        on(row.second->entered, [this, index] { readList(index); });
    }
    on(row.use, &QCheckBox::toggled, [this, index] { useBoxChanged(index); });
    on(row.first->entered, [this, index] { readList(index); });
    on(row.first->changed, [this, index] {
        Row& changed = m_rows[index];
        if (!changed.first->text().trimmed().isEmpty())
            changed.use->setChecked(true);
    });
}

controls::Field* QueryForm::makeField(const Criterion& criterion, const QString& name,
                                      const QString& spoken) {
    if (criterion.kind == Criterion::Kind::Date) {
        auto* made = named(new DateField(this), name, spoken);
        made->setMinimumWidth(made->fontMetrics().averageCharWidth() * 15 + 16);
        return made;
    }
    auto* made = named(new DataCombo(this), name, spoken);
    made->setMinimumContentsLength(24);
    if (criterion.kind == Criterion::Kind::Number) {
        made->setKeyFilter(values::keys::digits());
        // Job 1 is meant as typed, and not as the beginning of the latest one.
        made->lineEdit()->setCompleter(nullptr);
    }
    QStringList words;
    for (const auto& choice : criterion.choices)
        words << choice.first;
    made->setItems(words);
    return made;
}

// Not before somebody wants to choose: a shop of many years has many part numbers.
void QueryForm::readList(std::size_t index) {
    const Criterion& criterion = m_query.criteria[index];
    Row& row = m_rows[index];
    if (row.listed || criterion.list.isEmpty())
        return;
    row.listed = true;
    const screen::BusyPointer busy;
    const jet::Recordset rows =
        core::MainDatabase().openRecordset(criterion.list, jet::RecordsetType::Snapshot);
    const QStringList fields = rows.fieldNames();
    for (controls::Field* field : {row.first, row.second}) {
        if (auto* combo = dynamic_cast<DataCombo*>(field))
            combo->setRows(rows, fields.first(), fields.last());
    }
}

void QueryForm::useBoxChanged(std::size_t index) {
    const Row& row = m_rows[index];
    const bool used = row.use->isChecked();
    if (row.range)
        row.range->setEnabled(used);
    if (used) {
        // Ticked by a person, who now enters the value.
        if (row.use->hasFocus())
            row.first->widget()->setFocus();
        return;
    }
    row.first->clear();
    if (row.range)
        row.range->setChecked(false);
}

void QueryForm::rangeBoxChanged(std::size_t index) {
    const Row& row = m_rows[index];
    row.second->widget()->setVisible(row.range->isChecked());
    if (row.range->isChecked())
        row.second->widget()->setFocus();
    else
        row.second->clear();
}

Given QueryForm::given(std::size_t index) const {
    const Row& row = m_rows[index];
    Given value;
    value.used = row.use->isChecked();
    value.range = row.range && row.range->isChecked();
    const auto take = [](controls::Field* field, QString& text, std::optional<QDate>& day,
                         bool& valid) {
        text = field->text().trimmed();
        if (const auto* date = dynamic_cast<const DateField*>(field)) {
            day = date->date();
            valid = date->isValid();
        }
    };
    take(row.first, value.first, value.firstDay, value.firstValid);
    if (row.second)
        take(row.second, value.second, value.secondDay, value.secondValid);
    if (const auto* combo = dynamic_cast<const DataCombo*>(row.first))
        value.key = combo->boundText();
    return value;
}

void QueryForm::Form_Activate() {
    // When the frame around has put the focus where it had been: on a button.
    QTimer::singleShot(0, this, [this] {
        const auto asked = std::find_if(m_rows.begin(), m_rows.end(),
                                        [](const Row& row) { return row.use->isChecked(); });
        const QWidget* now = QApplication::focusWidget();
        if (asked != m_rows.end() && now && isAncestorOf(now))
            asked->first->widget()->setFocus(Qt::OtherFocusReason);
    });
}

void QueryForm::cmdGenerate_Click() {
    // A field with an impossible date counts as empty, and yet has to be told.
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const Given value = given(i);
        if (value.first.isEmpty())
            m_rows[i].use->setChecked(!value.firstValid);
    }
    std::vector<Given> all;
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        all.push_back(given(i));
    if (const auto wrong = checkCriteria(m_query, all)) {
        complain(*wrong);
        return;
    }
    const auto texts = queryTexts(m_query, all);
    if (!texts) {
        complain(u"Please Enter Criteria For Query!"_s, m_rows.front().use,
                 screen::Icon::Exclamation, u"No Criteria!"_s);
        return;
    }
    if (m_query.testsEmptyAnswer) {
        const screen::BusyPointer busy;
        if (!core::MainDatabase().hasRows(texts->statement)) {
            complain(u"No Records satisfy your Criteria!"_s, m_rows.front().use,
                     screen::Icon::Exclamation, u"No Records Found"_s);
            return;
        }
    }
    m_texts = *texts;
    // Results of an earlier question give way.
    if (screen::Form* earlier = screen::Forms::find(m_query.resultsForm))
        earlier->unload();
    screen::Forms::show(m_query.resultsForm);
}

} // namespace reporting
