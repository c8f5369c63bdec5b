#include "platform/report/Attachment.h"

#include "platform/report/ReportError.h"
#include "platform/values/Literals.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace report {

namespace {

constexpr double marginMm = 5;    ///< most printers leave so much white
constexpr int longSide = 3300;    ///< pixels: 300 of an inch of letter paper
constexpr int patienceMs = 60000; ///< for one page of a PDF
constexpr int stepMs = 100;

void checkProgress(const Document& document, const Progress& progress) {
    if (progress && !progress(document.pageCount()))
        throw ReportError(codes::cancelled, u"Cancelled"_s);
}

/// A page with the picture as large as it goes; `encoded` is the picture as it stands in a file,
/// empty where it has to be made.
Page pageOf(const Document& document, QImage picture, QByteArray encoded, const char* format) {
    const QSizeF paper = document.paper.size;
    if ((picture.width() > picture.height()) != (paper.width() > paper.height()) &&
        picture.width() != picture.height()) {
        picture = picture.transformed(QTransform().rotate(90));
        encoded.clear();
    }
    if (encoded.isEmpty()) {
        QBuffer buffer(&encoded);
        buffer.open(QIODevice::WriteOnly);
        picture.save(&buffer, format, 90);
    }
    const QSizeF room = paper - QSizeF(2 * marginMm, 2 * marginMm);
    const QSizeF size = QSizeF(picture.size()).scaled(room, Qt::KeepAspectRatio);
    PageItem item;
    item.kind = PageItem::Kind::Scan;
    item.x = static_cast<float>((paper.width() - size.width()) / 2);
    item.y = static_cast<float>((paper.height() - size.height()) / 2);
    item.w = static_cast<float>(size.width());
    item.h = static_cast<float>(size.height());
    item.picture = std::move(encoded);
    Page page;
    page.items.push_back(std::move(item));
    return page;
}

QString appendPicture(Document& document, const QString& path) {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true); // a photo knows which side is up
    const QByteArray format = reader.format();
    if (const QSize size = reader.size(); std::max(size.width(), size.height()) > longSide)
        reader.setScaledSize(size.scaled(longSide, longSide, Qt::KeepAspectRatio));
    const QImage picture = reader.read();
    if (picture.isNull())
        return u"no picture can be made of it"_s;
    document.append(pageOf(document, picture, {}, format == "jpeg" ? "jpeg" : "png"));
    return {};
}

QString appendPdf(Document& document, const QString& path, const Progress& progress) {
    const QString tool = QStandardPaths::findExecutable(u"pdftoppm"_s);
    if (tool.isEmpty())
        return u"pdftoppm is missing on this machine: it comes with the package poppler-utils"_s;
    const QTemporaryDir folder;
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(tool, {u"-png"_s, u"-scale-to"_s, QString::number(longSide), path,
                         folder.filePath(u"page"_s)});
    const auto made = [&] {
        return QDir(folder.path()).entryList({u"*.png"_s}, QDir::Files, QDir::Name);
    };
    QElapsedTimer since;
    since.start();
    qsizetype pages = 0;
    while (process.state() != QProcess::NotRunning && !process.waitForFinished(stepMs)) {
        if (const qsizetype now = made().size(); now != pages) {
            pages = now;
            since.restart();
        }
        if (progress && !progress(document.pageCount() + static_cast<int>(pages))) {
            process.kill();
            process.waitForFinished();
            throw ReportError(codes::cancelled, u"Cancelled"_s);
        }
        if (since.hasExpired(patienceMs)) {
            process.kill();
            process.waitForFinished();
            return u"a page of it takes too long to draw"_s;
        }
    }
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    const QStringList files = made();
    if (errors.contains(u"password"_s, Qt::CaseInsensitive))
        return u"it is locked by a password"_s;
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0 || files.isEmpty())
        return u"the PDF is damaged"_s;
    std::vector<Page> drawn;
    for (const QString& name : files) {
        QFile file(folder.filePath(name));
        const QByteArray encoded = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        const QImage picture = QImage::fromData(encoded, "png");
        if (picture.isNull())
            return u"the PDF is damaged, or there is no room for its pages"_s;
        drawn.push_back(pageOf(document, picture, encoded, "png"));
        checkProgress(document, progress);
    }
    for (const Page& page : drawn)
        document.append(page);
    return {};
}

} // namespace

QString appendFile(Document& document, const QString& path, const Progress& progress) {
    checkProgress(document, progress);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return u"it can't be read"_s;
    const bool pdf = file.peek(1024).contains("%PDF-");
    file.close();
    return pdf ? appendPdf(document, path, progress) : appendPicture(document, path);
}

} // namespace report
