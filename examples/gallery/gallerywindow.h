#ifndef SKINWIDGETS_EXAMPLES_GALLERY_GALLERYWINDOW_H
#define SKINWIDGETS_EXAMPLES_GALLERY_GALLERYWINDOW_H

#include <QWidget>

class QListWidget;
class QStackedWidget;

// The list of pages and the page that is chosen in it. The window bears the name of the skin that its widgets show.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    explicit GalleryWindow(const QString& skin);

    // False where no page has that name; case does not count.
    bool choosePage(const QString& name);

    // The window as it stands.
    QPixmap picture();
    // All pages, one below another.
    QPixmap pictureOfAllPages();

private:
    QListWidget* m_list;
    QStackedWidget* m_stack;
};

#endif
