#include "gallerywindow.h"

#include "pages.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPainter>
#include <QScrollArea>
#include <QStackedWidget>

#include <algorithm>

GalleryWindow::GalleryWindow(const QString& skin) : m_list(new QListWidget(this)), m_stack(new QStackedWidget(this))
{
    setObjectName(skin);
    setWindowTitle(tr("SkinWidgets gallery: %1").arg(skin));
    m_list->setFixedWidth(140);
    m_list->setFrameShape(QFrame::NoFrame);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_list);
    layout->addWidget(m_stack, 1);
    int widest = 0;
    for (const PageEntry& entry : allPages()) {
        auto* const item = new QListWidgetItem(entry.name, m_list);
        item->setTextAlignment(Qt::AlignCenter);
        item->setSizeHint(QSize(0, 40));
        auto* const view = new QScrollArea(m_stack);
        view->setFrameShape(QFrame::NoFrame);
        view->setWidgetResizable(true);
        view->setWidget(entry.create(view));
        m_stack->addWidget(view);
        widest = std::max(widest, view->widget()->sizeHint().width());
    }
    connect(m_list, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    m_list->setCurrentRow(0);
    resize(m_list->width() + widest, 760);
}

bool GalleryWindow::choosePage(const QString& name)
{
    for (int row = 0; row < m_list->count(); ++row) {
        if (m_list->item(row)->text().compare(name, Qt::CaseInsensitive) != 0)
            continue;
        m_list->setCurrentRow(row);
        return true;
    }
    return false;
}

QPixmap GalleryWindow::picture()
{
    return grab();
}

QPixmap GalleryWindow::pictureOfAllPages()
{
    QList<QPixmap> pictures;
    QSize size;
    for (int row = 0; row < m_list->count(); ++row) {
        m_list->setCurrentRow(row);
        QWidget* const page = qobject_cast<QScrollArea*>(m_stack->widget(row))->widget();
        // Without the empty rest that fills the window below a short page.
        const int height = page->layout()->totalHeightForWidth(page->width());
        pictures += page->grab(QRect(0, 0, page->width(), height));
        size = QSize(std::max(size.width(), page->width()), size.height() + height);
    }
    QPixmap all(size);
    all.fill(palette().color(QPalette::Window));
    QPainter painter(&all);
    int y = 0;
    for (const QPixmap& picture : pictures) {
        painter.drawPixmap(0, y, picture);
        y += picture.height();
    }
    return all;
}
