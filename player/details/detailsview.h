#ifndef SKINWIDGETS_PLAYER_DETAILS_DETAILSVIEW_H
#define SKINWIDGETS_PLAYER_DETAILS_DETAILSVIEW_H

#include "player/details/detailspage.h"
#include "player/wheelscroll.h"
#include "scroll/scrollviewskin.h"

#include <QTimer>

/*
 * Shows a page of details and scrolls it: by dragging the contents, by the wheel, by its bar and by the slots.
 *
 * A drag begins at the style's drag distance from the press, so that a trembling stylus scrolls nothing, and the
 * contents follow from there on without a jump. The view keeps the current line of a text with times in sight for as
 * long as the line before it was; once it is scrolled away the user reads on undisturbed.
 */
class DetailsView : public ScrollViewSkin
{
    Q_OBJECT

public:
    explicit DetailsView(QWidget* parent = nullptr, const char* name = nullptr);
    ~DetailsView() override;

    void setLook(const DetailsPage::Look& look);
    // Shows what there is to tell about a file, from its beginning. A null cover shows that of the look.
    void showTrack(const TrackDetails& track, const QImage& cover, const TrackText& text);
    // More has become known of the same file: the position stays, and the text does.
    void updateTrack(const TrackDetails& track, const QImage& cover);
    // Milliseconds.
    void setPosition(qint64 position);

    const DetailsPage& page() const { return m_page; }

public slots:
    void scrollLines(int lines);
    // A page less one line, so that the eye finds its place.
    void scrollPages(int pages);
    void scrollToStart();
    void scrollToEnd();

protected:
    void drawContents(QPainter* painter, int cx, int cy, int cw, int ch) override;
    using ScrollViewSkin::drawContents;
    void contentsMousePressEvent(QMouseEvent* event) override;
    void contentsMouseMoveEvent(QMouseEvent* event) override;
    void contentsMouseReleaseEvent(QMouseEvent* event) override;
    void contentsWheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum Drag { NoDrag, Pressed, Dragging };

    void layOut();
    void layOutMore();
    void takeHeight();
    bool isInSight(const QRect& rect) const;

    DetailsPage m_page;
    TrackText m_text;
    QTimer m_layoutTimer;
    Drag m_drag = NoDrag;
    // Where the stylus and the contents were when the drag began.
    int m_dragStart = 0;
    int m_dragContents = 0;
    WheelScroll m_wheel;
};

#endif
