#include "sample/Papers.h"

#include "core/keeping/Files.h"
#include "core/papers/Papers.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtEndian>

#include <array>

namespace sample {

namespace {

/// A PDF of one page from what draws it.
QByteArray pdf(const QByteArray& drawing) {
    const QByteArrayList objects{
        "<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        QByteArray("<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R") +
            "/Resources<</Font<</F 5 0 R>>>>>>",
        "<</Length " + QByteArray::number(drawing.size()) + ">>stream\n" + drawing + "\nendstream",
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"};
    QByteArray file = "%PDF-1.4\n", places;
    for (qsizetype i = 0; i < objects.size(); ++i) {
        places += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(objects.size() + 1);
    return file + "xref\n0 " + count + "\n0000000000 65535 f \n" + places + "trailer<</Size " +
           count + "/Root 1 0 R>>\nstartxref\n" + QByteArray::number(file.size()) + "\n%%EOF\n";
}

QByteArray text(int x, int y, int size, const QByteArray& words) {
    QByteArray plain = words;
    plain.replace('\\', "\\\\").replace('(', "\\(").replace(')', "\\)");
    return "BT /F " + QByteArray::number(size) + " Tf " + QByteArray::number(x) + ' ' +
           QByteArray::number(y) + " Td (" + plain + ") Tj ET\n";
}

/// A plate with four pockets, and its title.
QByteArray drawingOf(const QByteArray& part) {
    QByteArray drawing = "1.5 w 36 36 540 720 re S 356 36 220 80 re S\n"
                         "156 360 300 240 re S 0.75 w 216 420 180 120 re S\n";
    for (const int x : {176, 416})
        for (const int y : {375, 565})
            drawing += QByteArray::number(x) + ' ' + QByteArray::number(y) + " 20 20 re S\n";
    return drawing + "0.5 w 156 330 300 0 re S 476 360 0 240 re S\n" + text(290, 334, 11, "150") +
           text(482, 476, 11, "120") + text(366, 92, 14, part) +
           text(366, 72, 10, "Plate, 4 pockets 20 x 20") + text(366, 52, 10, "Scale 1:1, rev. B");
}

QByteArray chunk(const QByteArray& kind, const QByteArray& data) {
    quint32 crc = 0xffffffffU;
    for (const char byte : kind + data) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xedb88320U : 0U);
    }
    std::array<char, 4> size{}, check{};
    qToBigEndian(static_cast<quint32>(data.size()), size.data());
    qToBigEndian(~crc, check.data());
    return QByteArray(size.data(), 4) + kind + data + QByteArray(check.data(), 4);
}

/// A PNG: a grey plate with a bore, lit from the left.
QByteArray photo() {
    constexpr int width = 480, height = 320;
    QByteArray rows;
    for (int y = 0; y < height; ++y) {
        rows += '\0';
        for (int x = 0; x < width; ++x) {
            const int dx = x - width / 2, dy = y - height / 2;
            const bool bore = dx * dx + dy * dy < 70 * 70;
            const bool plate = x > 60 && x < width - 60 && y > 50 && y < height - 50;
            rows += static_cast<char>(bore ? 40 : plate ? 220 - x / 4 : 120 + y / 8);
        }
    }
    std::array<char, 13> head{};
    qToBigEndian(static_cast<quint32>(width), head.data());
    qToBigEndian(static_cast<quint32>(height), head.data() + 4);
    head[8] = 8; // bits of grey
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", QByteArray(head.data(), 13)) +
           chunk("IDAT", qCompress(rows).mid(4)) + chunk("IEND", {});
}

} // namespace

void addPapers(jet::Database& database, const QString& programFolder) {
    if (database.isServer())
        database.execute(u"UPDATE SystemSettings SET PapersFolder = '%1'"_s.arg(
            QDir(programFolder).absoluteFilePath(u"Papers"_s)));
    const keeping::PaperStore store = core::paperStore(database, programFolder);
    const QTemporaryDir from;
    const auto add = [&](const QString& kind, qint64 record, const QString& name,
                         const QByteArray& contents, const QString& by) {
        const QString path = from.filePath(name);
        keeping::writeWhole(path, contents);
        core::addPapers(database, *core::paperKind(kind), record, {{name, store.add(path)}}, by);
    };
    jet::Recordset job = database.openRecordset(
        u"SELECT TOP 1 JobNo, EstNo, PartNo, CustID FROM Job WHERE Shipped = False AND EstNo > 0 "
        "AND PartNo <> '' ORDER BY JobNo DESC"_s,
        jet::RecordsetType::Snapshot);
    if (job.eof())
        return;
    const QString part = job.text(u"PartNo");
    const qint64 number = job[u"JobNo"].toLong(), estimate = job[u"EstNo"].toLong();
    add(u"Estimate"_s, estimate, part + u" rev B.pdf"_s, pdf(drawingOf(part.toLatin1())),
        u"estimator"_s);
    core::printBehind(database, {database.lookup(u"SELECT MAX(ID) FROM Papers"_s).toLong()}, true);
    core::carryPapers(database, u"Estimate"_s, estimate, u"Job"_s, number);
    add(u"Job"_s, number, u"First piece.png"_s, photo(), u"planner"_s);
    add(u"Customer"_s, job[u"CustID"].toLong(), u"Terms of purchase.pdf"_s,
        pdf(text(72, 700, 18, "Terms of purchase") +
            text(72, 670, 11, "Deliveries come with a certificate of the material.")),
        u"Admin"_s);
}

} // namespace sample
