#include "platform/jet/Recordset.h"

#include "platform/jet/RecordsetData.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

RecordsetData& open(const std::shared_ptr<RecordsetData>& data) {
    if (!data)
        throw Error(errors::closed, u"Object invalid or no longer set."_s);
    return *data;
}

/// With its rows, where they were to come later.
RecordsetData& opened(const std::shared_ptr<RecordsetData>& data) {
    RecordsetData& set = open(data);
    set.arrive();
    return set;
}

/// The same for what a set can do before its rows are there.
RecordsetData& early(const std::shared_ptr<RecordsetData>& data) {
    RecordsetData& set = open(data);
    set.arriveIfSent();
    return set;
}

} // namespace

bool Recordset::bof() const {
    return opened(m_data).bof();
}
bool Recordset::eof() const {
    return opened(m_data).eof();
}
int Recordset::recordCount() const {
    return opened(m_data).recordCount();
}
int Recordset::absolutePosition() const {
    return opened(m_data).absolutePosition();
}

bool Recordset::knowsPlace() const {
    return opened(m_data).knowsPlace();
}
bool Recordset::isFirst() const {
    return opened(m_data).isFirst();
}
bool Recordset::isLast() const {
    return opened(m_data).isLast();
}

void Recordset::moveFirst() {
    opened(m_data).moveFirst();
}
void Recordset::moveLast() {
    early(m_data).moveLast();
}
void Recordset::moveNext() {
    opened(m_data).moveNext();
}
void Recordset::movePrevious() {
    opened(m_data).movePrevious();
}
void Recordset::moveTo(int position) {
    opened(m_data).moveTo(position);
}

Value Recordset::keyAhead(int step) const {
    return opened(m_data).keyAhead(step);
}

void Recordset::findFirst(const QString& criteria) {
    early(m_data).findFirst(criteria);
}
bool Recordset::noMatch() const {
    return early(m_data).noMatch();
}

Value Recordset::bookmark() const {
    return opened(m_data).bookmark();
}
void Recordset::setBookmark(const Value& mark) {
    opened(m_data).setBookmark(mark);
}

Value Recordset::operator[](QStringView name) const {
    return opened(m_data).field(name);
}
Value Recordset::field(int index) const {
    return opened(m_data).field(index);
}
QStringList Recordset::fieldNames() const {
    return opened(m_data).fieldNames();
}

void Recordset::addNew() {
    early(m_data).addNew();
}
void Recordset::edit() {
    opened(m_data).edit();
}
void Recordset::set(QStringView name, const Value& value) {
    opened(m_data).set(name, value);
}
void Recordset::update() {
    opened(m_data).update();
}
void Recordset::cancelUpdate() {
    opened(m_data).cancelUpdate();
}
void Recordset::remove() {
    opened(m_data).remove();
}
Value Recordset::lastAddedKey() const {
    return opened(m_data).lastAddedKey();
}

void Recordset::requery() {
    open(m_data).load();
}
bool Recordset::requeryAt(const Value& mark) {
    return open(m_data).loadAt(mark);
}
void Recordset::refreshRow() {
    opened(m_data).refreshRow();
}

const QString& Recordset::sql() const {
    return open(m_data).sql();
}

} // namespace jet
