#include "platform/report/Layout.h"
#include "platform/report/Painting.h"
#include "platform/values/Literals.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

namespace {

constexpr int linesPerPage = 56;

/// Rows as they come: none is held.
class EndlessRows : public report::Rows {
  public:
    explicit EndlessRows(int count) : m_count(count) {}
    QStringList fieldNames() const override {
        return {u"No"_s, u"Part"_s, u"Description"_s, u"Quantity"_s, u"Price"_s, u"Due"_s};
    }
    bool next(std::vector<jet::Value>& row) override {
        if (m_at == m_count)
            return false;
        ++m_at;
        row = {m_at,
               u"AX-%1"_s.arg(m_at * 7 % 10000),
               u"Bracket, left hand, anodized"_s,
               m_at % 500,
               values::Currency::fromTenThousandths(m_at * 12345),
               QDate(2026, 1, 1).addDays(m_at % 365)};
        return true;
    }

  private:
    int m_count;
    int m_at = 0;
};

class EndlessSource : public report::RowSource {
  public:
    explicit EndlessSource(int count) : m_count(count) {}
    std::unique_ptr<report::Rows> open(const QString&) override {
        return std::make_unique<EndlessRows>(m_count);
    }
    std::optional<jet::ColumnType> columnType(const QString&, const QString&) const override {
        return std::nullopt;
    }

  private:
    int m_count;
};

report::ReportFile file() {
    return report::readReportText(
        "<report title=\"Parts\"><page left=\"15\" top=\"12\" right=\"15\" bottom=\"12\"/>"
        "<query><from>Part</from></query>"
        "<pageHeader><band height=\"10\"><text size=\"14\" "
        "bold=\"yes\">{title}</text></band></pageHeader>"
        "<pageFooter><band height=\"8\"><text y=\"3\" align=\"right\">Page {page} of {pages}</text>"
        "</band></pageFooter>"
        "<body><detail><band height=\"4.2\">"
        "<text w=\"16\" align=\"right\">{No}</text><text x=\"20\" w=\"28\">{Part}</text>"
        "<text x=\"50\" w=\"66\">{Description}</text>"
        "<text x=\"118\" w=\"16\" align=\"right\">{Quantity:#,##0}</text>"
        "<text x=\"136\" w=\"22\" align=\"right\">{Price:#,##0.00}</text>"
        "<text x=\"162\" w=\"22\">{Due:Short Date}</text></band></detail>"
        "<footer><band><text>{count()} parts, {sum(Price):#,##0.00}</text></band></footer>"
        "</body></report>",
        u"parts.rpt"_s);
}

/// Most memory that the process has held so far, in megabytes.
double peakMegabytes() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const auto& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ').value(1).toDouble() / 1024;
    }
    return 0;
}

void layOut(benchmark::State& state) {
    const auto report = file();
    EndlessSource source(static_cast<int>(state.range(0)) * linesPerPage);
    for (auto _ : state) {
        const auto document = report::layOut(report, source, {});
        state.counters["pages"] = document->pageCount();
    }
    state.counters["peakMB"] = peakMegabytes();
}

void layOutAndWritePdf(benchmark::State& state) {
    const auto report = file();
    EndlessSource source(static_cast<int>(state.range(0)) * linesPerPage);
    const QTemporaryDir folder;
    for (auto _ : state) {
        const auto document = report::layOut(report, source, {});
        report::writePdf(*document, folder.filePath(u"parts.pdf"_s));
        state.counters["pages"] = document->pageCount();
    }
    state.counters["peakMB"] = peakMegabytes();
}

} // namespace

BENCHMARK(layOut)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(layOutAndWritePdf)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(4000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
