#pragma once

#include "platform/controls/LineGrid.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"

#include <QBoxLayout>
#include <QPushButton>

#include <algorithm>
#include <memory>

namespace inventory {

/// The lines of an order in a grid, of which some are ticked and taken. A row has `selected`.
template <class Row>
class TickedLines {
  public:
    using Column = controls::LineColumn<Row>;

    static Column tick(const QString& title, int characters, bool Row::*member) {
        return {.look = {title, characters, controls::GridColumn::Kind::Check},
                .text = [member](const Row& row) { return row.*member ? u"1"_s : u"0"_s; },
                .take =
                    [member](Row& row, const QString& typed) {
                        row.*member = typed == u"1";
                        return QString();
                    }};
    }
    static Column number(const QString& title, int characters, qint64 Row::*member) {
        return {.look = {title, characters, controls::GridColumn::Kind::Number},
                .text = [member](const Row& row) { return QString::number(row.*member); }};
    }

    /// Makes "vaSpread1" and, below it, the buttons that tick all or none; returns the row that
    /// these stand in, for OK and Cancel.
    QHBoxLayout* make(screen::Form& form, QBoxLayout* outside, std::vector<Column> columns,
                      const QString& spoken) {
        grid = screen::named(new controls::LineGrid<Row>(model, std::move(columns), &form),
                             u"vaSpread1"_s, spoken);
        grid->setMovable(false);
        outside->addWidget(grid, 1);
        auto* foot = new QHBoxLayout;
        outside->addLayout(foot);
        const auto button = [&](const QString& name, const QString& caption, bool on) {
            auto* made = screen::named(new QPushButton(caption, &form), name);
            made->setAutoDefault(false);
            foot->addWidget(made);
            form.on(made, [this, on] { tickAll(on); });
        };
        button(u"cmdSelAll"_s, u"Select &All"_s, true);
        button(u"cmdSelNone"_s, u"Select &None"_s, false);
        foot->addStretch();
        return foot;
    }

    /// Whether what is ticked can be taken; false after a message.
    bool areReady() {
        grid->setFocus(); // what is being typed counts
        const QString why = grid->complaint();
        const auto& rows = model->rows();
        if (!why.isEmpty())
            screen::MsgBox(why, screen::Buttons::Ok, screen::Icon::Exclamation);
        else if (std::none_of(rows.begin(), rows.end(),
                              [](const Row& row) { return row.selected; }))
            screen::MsgBox(u"No Records Selected."_s, screen::Buttons::Ok,
                           screen::Icon::Exclamation, u"Nothing Selected"_s);
        else
            return true;
        return false;
    }

    const std::shared_ptr<controls::LineModel<Row>> model =
        std::make_shared<controls::LineModel<Row>>();
    controls::LineGrid<Row>* grid = nullptr;

  private:
    void tickAll(bool on) {
        const typename controls::LineModel<Row>::Group group(*model);
        for (int place = 0; place < model->count(); ++place) {
            Row row = model->row(place);
            row.selected = on;
            model->change(place, std::move(row));
        }
    }
};

} // namespace inventory
