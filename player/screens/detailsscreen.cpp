#include "player/screens/detailsscreen.h"

#include "player/details/coverpicture.h"
#include "player/details/detailsview.h"
#include "player/playback.h"
#include "player/skinfiles.h"
#include "skinbase/skinbase.h"

namespace
{

DetailsPage::Look lookFrom(const Config& group, const QWidget* widget)
{
    DetailsPage::Look look;
    look.title = skinfiles::color(group, QStringLiteral("title_color"), look.title);
    look.text = skinfiles::color(group, QStringLiteral("text_color"), look.text);
    look.label = skinfiles::color(group, QStringLiteral("label_color"), look.label);
    look.accent = skinfiles::color(group, QStringLiteral("accent_color"), look.accent);
    look.font = widget->font();
    const QString cover = group.readEntry(QStringLiteral("cover"));
    const QSize size(DetailsPage::coverSide, DetailsPage::coverSide);
    if (!cover.isEmpty())
        look.cover = QPixmap::fromImage(coverpicture::read(skinfiles::path(widget, cover), size));
    return look;
}

} // namespace

DetailsScreen::DetailsScreen(const Playback* playback, QWidget* parent)
    : Screen("Details", parent),
      m_playback(playback),
      m_view(new DetailsView(panel(), "details"))
{
    createTitle(skinfiles::group(this, QStringLiteral("Details")), tr("Details"), DetailsPage::Look().title);
    createView();
    addButton(QStringLiteral("close"), [this] { emit closeRequested(); });
    addAllKeys();
    panel()->showFocus(QStringLiteral("close"));

    connect(playback, &Playback::currentChanged, this, &DetailsScreen::showFile);
    connect(playback, &Playback::metaDataChanged, this, &DetailsScreen::showTags);
    connect(playback, &Playback::durationChanged, this, &DetailsScreen::showTags);
    connect(playback, &Playback::positionChanged, m_view, &DetailsView::setPosition);
}

DetailsScreen::~DetailsScreen() = default;

void DetailsScreen::createView()
{
    const Config group = skinfiles::group(this, QStringLiteral("Details"));
    const QRect place = skinfiles::rect(group, QStringLiteral("view"));
    m_view->setLook(lookFrom(group, this));
    m_view->setGeometry(place.isEmpty() ? panel()->rect() : place);
    if (!panel()->backgroundPixmap())
        return;
    m_view->viewport()->setBackgroundPixmap(panel()->backgroundPixmap()->copy(m_view->geometry()));
    m_view->viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

void DetailsScreen::addAllKeys()
{
    addKeys({Qt::Key_Up}, WhileHeld, [this] { m_view->scrollLines(-1); });
    addKeys({Qt::Key_Down}, WhileHeld, [this] { m_view->scrollLines(1); });
    addKeys({Qt::Key_PageUp}, WhileHeld, [this] { m_view->scrollPages(-1); });
    addKeys({Qt::Key_PageDown}, WhileHeld, [this] { m_view->scrollPages(1); });
    addKeys({Qt::Key_Home}, Once, [this] { m_view->scrollToStart(); });
    addKeys({Qt::Key_End}, Once, [this] { m_view->scrollToEnd(); });
    addKeys({Qt::Key_Escape, Qt::Key_Back, Qt::Key_I}, Once, [this] { emit closeRequested(); });
}

void DetailsScreen::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        showFile();
    Screen::showEvent(event);
}

void DetailsScreen::showFile()
{
    if (isHidden())
        return;
    m_file = m_playback->currentFile();
    const QSize size(DetailsPage::coverSide, DetailsPage::coverSide);
    m_coverBeside = m_file.isEmpty() ? QImage() : coverpicture::beside(m_file, size);
    const TrackText text = m_file.isEmpty() ? TrackText() : TrackText::beside(m_file);
    m_view->showTrack({}, {}, text);
    showTags();
    m_view->setPosition(m_playback->position());
}

void DetailsScreen::showTags()
{
    // Reports of the next file may come before the news that it is the current one.
    if (isHidden() || m_file != m_playback->currentFile())
        return;
    const TrackDetails details =
        TrackDetails::of(m_file, m_playback->metaData(), m_playback->duration(), m_playback->currentTitle());
    m_view->updateTrack(details, details.cover.isNull() ? m_coverBeside : details.cover);
}
