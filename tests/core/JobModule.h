#pragma once

#include "core/records/RecordScreen.h"
#include "platform/screen/Form.h"
#include "platform/values/Literals.h"

#include <QLineEdit>

namespace coretest {

/// A module that shows job 1.
class JobModule : public screen::Form, public core::RecordScreen {
  public:
    JobModule() : Form(u"frmJob"_s, u"Job"_s), m_field(new QLineEdit(this)) {}
    QString mode() const override { return u"Browse"_s; }
    qint64 currentKey() const override { return m_key; }
    bool goToRecord(qint64) override { return false; }
    qint64 m_key = 1;
    QLineEdit* m_field;
};

} // namespace coretest
