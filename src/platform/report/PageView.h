#pragma once

#include "platform/report/Document.h"
#include "platform/report/Painting.h"

#include <QAbstractScrollArea>
#include <QCache>

#include <functional>
#include <memory>
#include <optional>

namespace report {

/// The pages of a document one below the other, painted as they are seen.
class PageView : public QAbstractScrollArea {
  public:
    enum class Zoom { Percent, Width, Page };

    explicit PageView(std::shared_ptr<const Document> document, QWidget* parent = nullptr);

    /// The page of which most is seen, from 0.
    int currentPage() const;
    void goToPage(int page);
    void setZoom(Zoom zoom, double percent = 100);
    Zoom zoom() const { return m_zoom; }
    /// In percent of the paper's size.
    double percent() const { return m_percent; }
    /// Marks what contains the text, without regard to case, and shows the next place behind the
    /// last one found (or before it), going on at the other end. Shows which page it is on; false
    /// if the text is nowhere.
    bool find(const QString& text, bool backward = false);
    void clearSearch();

    /// Told whenever another page is the current one, or the zoom has changed.
    std::function<void()> changed;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Hit {
        int page = -1;
        QRectF place; ///< millimetres on the paper
    };
    double pixelsForMm() const;
    QSize pageSize() const; ///< in pixels
    int pageTop(int page) const;
    int pageLeft() const;
    void layOut();
    const Page& page(int index);
    std::vector<QRectF> hitsOn(int page);
    void showHit(const Hit& hit);

    std::shared_ptr<const Document> m_document;
    PagePainter m_painter;
    QCache<int, Page> m_pages;
    Zoom m_zoom = Zoom::Width;
    double m_percent = 100;
    int m_current = 0;
    QString m_wanted;
    Hit m_hit;
};

} // namespace report
