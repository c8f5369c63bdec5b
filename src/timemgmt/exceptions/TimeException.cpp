#include "timemgmt/exceptions/TimeException.h"

#include "platform/values/Literals.h"

namespace timemgmt {

QString kindName(ExceptionKind kind) {
    static const std::array<QString, exceptionKinds> names = {
        u"Never signed out"_s,       u"Open longer than a shift"_s, u"Work outside attendance"_s,
        u"Overlapping attendance"_s, u"Shipped or deleted job"_s,   u"Over the estimate"_s,
        u"Entered by hand"_s,        u"Finished out of order"_s,    u"Employee has left"_s};
    return names[static_cast<std::size_t>(kind)];
}

} // namespace timemgmt
