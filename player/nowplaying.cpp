#include "player/nowplaying.h"

#include "controls/labelimage.h"
#include "controls/titlebar.h"
#include "player/details/coverpicture.h"
#include "player/details/trackdetails.h"
#include "player/displaytext.h"
#include "player/infotext.h"
#include "player/playback.h"

#include <QFileInfo>

namespace
{

// Where the title bar puts its texts: so far from its edge, and from each other.
constexpr int textGap = 10;

} // namespace

NowPlaying::NowPlaying(const Playback* playback, const Widgets& widgets, int titleEnd, const QImage& defaultCover)
    : m_playback(playback),
      m_titleBar(widgets.titleBar),
      m_cover(widgets.cover),
      m_info(widgets.info),
      m_titleEnd(titleEnd)
{
    if (m_cover)
        m_defaultCover = coverpicture::filling(defaultCover, m_cover->size());
    connect(playback, &Playback::currentChanged, this, &NowPlaying::showFile);
    connect(playback, &Playback::metaDataChanged, this, &NowPlaying::showTags);
    showFile();
}

void NowPlaying::showFile()
{
    m_file = m_playback->currentFile();
    m_coverBeside = QImage();
    if (m_cover && !m_file.isEmpty())
        m_coverBeside = coverpicture::filling(coverpicture::beside(m_file, m_cover->size()), m_cover->size());
    showTags();
}

void NowPlaying::showTags()
{
    // Reports of the next file may come before the news that it is the current one.
    if (m_file != m_playback->currentFile())
        return;
    const TrackDetails details =
        TrackDetails::of(m_file, m_playback->metaData(), m_playback->duration(), m_playback->currentTitle());
    showHeading(details.title);
    showCover(details.cover);
    if (m_info)
        m_info->setTexts({details.title, details.artist, details.album});
}

void NowPlaying::showHeading(const QString& title)
{
    if (!m_titleBar)
        return;
    const QString name = QFileInfo(m_file).fileName();
    const displaytext::Heading heading =
        displaytext::heading(title == name ? QString() : title, m_file.isEmpty() ? tr("skinplayer") : name,
                             m_titleBar->font(), textGap, m_titleEnd - textGap);
    m_titleBar->setTitleBarText(heading.title);
    m_titleBar->setFileNameText(heading.file);
}

void NowPlaying::showCover(const QImage& tagged)
{
    if (!m_cover)
        return;
    QImage cover = coverpicture::filling(tagged, m_cover->size());
    if (cover.isNull())
        cover = m_coverBeside;
    if (cover.isNull())
        cover = m_defaultCover;
    m_cover->set_image(cover);
}
