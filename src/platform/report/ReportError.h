#pragma once

#include <QString>

#include <exception>

namespace report {

/// The engine's codes in use; 0 is success.
namespace codes {
inline constexpr int reportNotFound = 20504;   ///< no such report file
inline constexpr int invalidFieldName = 20509; ///< a band names a field that no query gives
inline constexpr int errorInFormula = 20515;   ///< syntax or unknown field in the selection formula
inline constexpr int unableToLoad = 20525;     ///< the report file can't be read or understood
inline constexpr int fileError = 20530;        ///< pages can't be written
inline constexpr int databaseError = 20533;    ///< the database refused a query
inline constexpr int cancelled = 20545;        ///< the user broke off
} // namespace codes

/// Why a report can't be made: the engine's code, and a text for whoever writes report files (with
/// file and line where there are some).
class ReportError : public std::exception {
  public:
    ReportError(int code, QString detail)
        : m_code(code), m_detail(std::move(detail)), m_what(m_detail.toUtf8()) {}
    int code() const { return m_code; }
    const QString& detail() const { return m_detail; }
    const char* what() const noexcept override { return m_what.constData(); }

  private:
    int m_code;
    QString m_detail;
    QByteArray m_what;
};

} // namespace report
