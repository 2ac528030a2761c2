#include "player/seekcontrol.h"

#include "media/sliderskin.h"
#include "media/timeskin.h"
#include "player/playback.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr qint64 pageStep = 10000;

} // namespace

SeekControl::SeekControl(Playback* playback, SliderSkin* slider, TimeSkin* time)
    : m_playback(playback),
      m_slider(slider),
      m_time(time)
{
    connect(playback, &Playback::currentChanged, this, &SeekControl::updateFile);
    connect(playback, &Playback::durationChanged, this, &SeekControl::updateFile);
    connect(playback, &Playback::seekableChanged, this, &SeekControl::updateFile);
    connect(playback, &Playback::positionChanged, this, &SeekControl::showPosition);
    // Where it stopped may be further than the last report.
    connect(playback, &Playback::playingChanged, this, &SeekControl::showPosition);

    m_releasedTimer.setObjectName(QStringLiteral("slider released"));
    m_releasedTimer.setSingleShot(true);
    connect(&m_releasedTimer, &QTimer::timeout, this, &SeekControl::showPosition);
    if (!slider)
        return;
    connect(slider, &SliderSkin::sliderPressed, this, [this] { m_dragged = true; });
    connect(slider, &SliderSkin::sliderMoved, this, &SeekControl::dragTo);
    connect(slider, &SliderSkin::seekReleased, this, &SeekControl::release);
}

QList<qint64> SeekControl::bookmarks() const
{
    return m_bookmarks.value(m_file);
}

void SeekControl::seekBy(qint64 distance)
{
    m_playback->setPosition(m_playback->position() + distance);
}

void SeekControl::setBookmark()
{
    QList<qint64>& marks = m_bookmarks[m_file];
    const qint64 position = m_playback->position();
    if (!m_scale.isValid() || marks.size() >= SliderSkin::maxMarkers || marks.contains(position))
        return;
    marks.append(position);
    placeMarker(position);
}

void SeekControl::removeNearestBookmark()
{
    QList<qint64>& marks = m_bookmarks[m_file];
    if (marks.isEmpty())
        return;
    const qint64 position = m_playback->position();
    const auto isNearer = [position](qint64 a, qint64 b) { return qAbs(a - position) < qAbs(b - position); };
    const auto nearest = std::min_element(marks.begin(), marks.end(), isNearer);
    if (m_slider)
        m_slider->removeMarker(m_markers.take(*nearest));
    marks.erase(nearest);
}

void SeekControl::removeAllBookmarks()
{
    m_bookmarks.remove(m_file);
    m_markers.clear();
    if (m_slider)
        m_slider->clearMarkers();
}

void SeekControl::placeMarker(qint64 position)
{
    if (!m_slider)
        return;
    const int marker = m_slider->insertMarker(Marker_1, m_scale.value(position));
    m_slider->updateMarker(marker);
    m_markers.insert(position, marker);
}

void SeekControl::updateFile()
{
    const QString file = m_playback->currentFile();
    const SeekScale scale(m_playback->isSeekable() ? m_playback->duration() : 0);
    if (file == m_file && scale == m_scale)
        return;
    m_file = file;
    m_scale = scale;
    m_dragged = false;
    m_markers.clear();
    if (m_slider) {
        // Takes the markers away as well, and ends a drag over what is not there any more.
        m_slider->init();
        m_slider->setValueInit(0, scale.maximum(), scale.value(pageStep));
    }
    if (m_slider && scale.isValid()) {
        // The bar stands at 0, but the value may still be one of the file before.
        m_slider->setValue(0);
        for (const qint64 position : bookmarks())
            placeMarker(position);
    }
    showPosition();
}

void SeekControl::showPosition()
{
    if (m_dragged)
        return;
    const qint64 position = m_playback->position();
    showTime(position);
    if (m_slider && m_scale.isValid())
        m_slider->setValue(m_scale.value(position));
}

void SeekControl::showTime(qint64 position)
{
    if (m_time)
        m_time->update_time(static_cast<unsigned int>(
            std::clamp<qint64>(position / 1000, 0, std::numeric_limits<unsigned int>::max())));
}

void SeekControl::dragTo(int value)
{
    showTime(m_scale.position(value));
}

void SeekControl::release(unsigned int value)
{
    m_dragged = false;
    m_playback->setPosition(m_scale.position(static_cast<int>(value)));
    // The slider takes no value before it has told everybody of its release.
    m_releasedTimer.start(0);
}
