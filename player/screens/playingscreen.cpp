#include "player/screens/playingscreen.h"

#include "controls/imagebutton.h"
#include "controls/labelimage.h"
#include "controls/titlebar.h"
#include "media/sliderskin.h"
#include "media/timeskin.h"
#include "media/volumeskin.h"
#include "player/details/coverpicture.h"
#include "player/infotext.h"
#include "player/messagelabel.h"
#include "player/nowplaying.h"
#include "player/ordercontrol.h"
#include "player/playback.h"
#include "player/seekcontrol.h"
#include "player/skinfiles.h"
#include "player/volumecontrol.h"
#include "qtopia/resource.h"
#include "skinbase/skinbase.h"
#include "toolkit/application.h"

#include <QKeyEvent>

#include <algorithm>

namespace
{

const QString playButton = QStringLiteral("play");
const QString pauseButton = QStringLiteral("pause");
const QString prevButton = QStringLiteral("prev");
const QString nextButton = QStringLiteral("next");

constexpr int volumeStep = 5;
constexpr qint64 seekStep = 10000;

// Of the title bar: its texts' height, and where its close button begins with some room before it.
constexpr int titlePixelSize = 13;
constexpr int titleEnd = 442;
constexpr int messagePixelSize = 14;

bool hasPlace(const Config& places, const QString& key)
{
    return places.hasKey(key + QLatin1String("_x")) && places.hasKey(key + QLatin1String("_y"));
}

} // namespace

PlayingScreen::PlayingScreen(Playback* playback, QWidget* parent) : Screen("Player", parent), m_playback(playback)
{
    createMediaWidgets();
    m_seek = std::make_unique<SeekControl>(playback, m_seekSlider, m_timeDisplay);
    m_volume = std::make_unique<VolumeControl>(playback, m_volumePanel);
    m_order = std::make_unique<OrderControl>(playback, m_shuffle, m_repeat);
    connect(playback, &Playback::playingChanged, this, &PlayingScreen::showPlayOrPause);
    connect(playback->playlist(), &Playlist::countChanged, this, [this](int count) { enableSteps(count > 1); });

    addButtons();
    addAllKeys();
    panel()->hideButton(pauseButton);
    panel()->showFocus(playButton);
    enableSteps(false);
    tellChanges();
}

PlayingScreen::~PlayingScreen() = default;

template <typename Widget>
Widget* PlayingScreen::createOnPanel(const Config& places, const QString& key, const char* group)
{
    if (!hasPlace(places, key))
        return nullptr;
    auto widget = std::make_unique<Widget>(panel(), group);
    if (widget->size().isEmpty())
        return nullptr;
    widget->move(skinfiles::point(places, key));
    widget->setAlphaOverride(255);
    widget->setBackgroundPixmap(*panel()->backgroundPixmap());
    return widget.release();
}

void PlayingScreen::createMediaWidgets()
{
    if (!panel()->backgroundPixmap())
        return;
    const Config places = skinfiles::group(this, QStringLiteral("Screen"));
    m_seekSlider = createOnPanel<SliderSkin>(places, QStringLiteral("seek"), "Seek");
    m_timeDisplay = createOnPanel<TimeSkin>(places, QStringLiteral("time"), "Time");
    m_volumePanel = createOnPanel<VolumeSkin>(places, QStringLiteral("volume"), "Volume");
    createTitleBar(places);
    m_shuffle = createToggle(places, "shuffle");
    m_repeat = createToggle(places, "repeat");
    createCover(places);
    createInfo(places);
    createMessage(places);
    const int end = std::min(titleEnd, m_titleBar ? panel()->width() - m_titleBar->x() : 0);
    const QString cover = skinfiles::path(this, places.readEntry(QStringLiteral("cover")));
    m_nowPlaying = std::make_unique<NowPlaying>(m_playback, NowPlaying::Widgets{m_titleBar, m_cover, m_info}, end,
                                                m_cover ? coverpicture::read(cover, m_cover->size()) : QImage());
}

void PlayingScreen::createTitleBar(const Config& places)
{
    const QString key = QStringLiteral("title");
    if (!hasPlace(places, key))
        return;
    m_titleBar = new TitleBar(panel(), "title");
    m_titleBar->move(skinfiles::point(places, key));
    QFont font = m_titleBar->font();
    font.setPixelSize(titlePixelSize);
    m_titleBar->setFont(font);
    // A press that leaves it without a click leaves the keyboard focus there, too.
    if (auto* button = m_titleBar->findChild<ImageButton*>())
        button->installEventFilter(this);
    connect(m_titleBar, &TitleBar::exitClicked, this, &Screen::closeRequested);
}

ImageButton* PlayingScreen::createToggle(const Config& places, const char* name)
{
    const QString key = QString::fromLatin1(name);
    const QSize size =
        Resource::loadPixmap(skinwidgets::applicationName() + QLatin1Char('/') + key + QLatin1String("_normal")).size();
    if (!hasPlace(places, key) || size.isEmpty())
        return nullptr;
    auto* button = new ImageButton(panel(), name);
    button->setToggle();
    button->setButtonImage(true);
    button->setGeometry(QRect(skinfiles::point(places, key), size));
    button->installEventFilter(this);
    return button;
}

void PlayingScreen::createCover(const Config& places)
{
    const QRect place = placeOnPanel(places, QStringLiteral("cover"));
    if (place.isEmpty())
        return;
    m_cover = new LabelImage(panel(), "cover");
    m_cover->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_cover->setGeometry(place);
    m_cover->setBackgroundPixmap(*panel()->backgroundPixmap());
}

void PlayingScreen::createInfo(const Config& places)
{
    const QRect place = placeOnPanel(places, QStringLiteral("info"));
    if (place.isEmpty())
        return;
    InfoText::Colors colors;
    colors.title = skinfiles::color(places, QStringLiteral("title_color"), colors.title);
    colors.artist = skinfiles::color(places, QStringLiteral("artist_color"), colors.artist);
    colors.album = skinfiles::color(places, QStringLiteral("album_color"), colors.album);
    m_info = new InfoText(colors, panel());
    m_info->setGeometry(place);
}

void PlayingScreen::createMessage(const Config& places)
{
    const QRect own = placeOnPanel(places, QStringLiteral("message"));
    const QRect place = own.isEmpty() && m_info ? m_info->geometry() : own;
    if (place.isEmpty())
        return;
    m_message = new MessageLabel(panel(), "message");
    m_message->setGeometry(place);
    QFont font = m_message->font();
    font.setPixelSize(messagePixelSize);
    font.setBold(true);
    m_message->setFont(font);
    m_message->setColor(skinfiles::color(places, QStringLiteral("message_color"), Qt::white));
    if (m_info && place.intersects(m_info->geometry()))
        connect(m_message, &MessageLabel::showingChanged, m_info, &QWidget::setHidden);
}

// Never larger than the panel, whatever the skin says.
QRect PlayingScreen::placeOnPanel(const Config& places, const QString& key) const
{
    return skinfiles::rect(places, key).intersected(panel()->rect());
}

void PlayingScreen::showMessage(const QString& message)
{
    if (m_message)
        m_message->showMessage(message);
}

void PlayingScreen::tellChanges()
{
    const auto tell = [this](const QString& change) {
        // What is set before the player starts is no news.
        if (isVisible())
            showMessage(change);
    };
    connect(m_playback, &Playback::volumeChanged, this, [tell](int volume) { tell(tr("Volume %1 %").arg(volume)); });
    connect(m_playback, &Playback::mutedChanged, this,
            [tell](bool muted) { tell(muted ? tr("Sound off") : tr("Sound on")); });
    connect(m_playback, &Playback::shuffledChanged, this,
            [tell](bool on) { tell(on ? tr("Shuffle on") : tr("Shuffle off")); });
    connect(m_playback, &Playback::repeatedChanged, this,
            [tell](bool on) { tell(on ? tr("Repeat on") : tr("Repeat off")); });
    connect(m_playback, &Playback::finished, this, [tell] { tell(tr("End of the playlist")); });
}

// An image button keeps these keys; here they lead back to the panel's buttons.
bool PlayingScreen::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Left || key == Qt::Key_Right) {
            panel()->setFocus();
            return true;
        }
    }
    return Screen::eventFilter(watched, event);
}

void PlayingScreen::addButtons()
{
    addButton(prevButton, [this] { m_playback->previous(); });
    addButton(playButton, [this] { m_playback->play(); });
    addButton(pauseButton, [this] { m_playback->pause(); });
    addButton(QStringLiteral("stop"), [this] { m_playback->stop(); });
    addButton(nextButton, [this] { m_playback->next(); });
    addButton(QStringLiteral("open"), [this] { emit openRequested(); });
    addButton(QStringLiteral("playlist"), [this] { emit playlistRequested(); });
    addButton(QStringLiteral("details"), [this] { emit detailsRequested(); });
}

void PlayingScreen::addAllKeys()
{
    addKeys({Qt::Key_Escape}, Once, [this] { emit closeRequested(); });
    addKeys({Qt::Key_P}, Once, [this] { emit playlistRequested(); });
    addKeys({Qt::Key_I}, Once, [this] { emit detailsRequested(); });
    addKeys({Qt::Key_PageUp, Qt::SHIFT | Qt::Key_Left}, WhileHeld, [this] { m_seek->seekBy(-seekStep); });
    addKeys({Qt::Key_PageDown, Qt::SHIFT | Qt::Key_Right}, WhileHeld, [this] { m_seek->seekBy(seekStep); });
    addKeys({Qt::Key_Up}, WhileHeld, [this] { m_volume->changeBy(volumeStep); });
    addKeys({Qt::Key_Down}, WhileHeld, [this] { m_volume->changeBy(-volumeStep); });
    addKeys({Qt::Key_M}, Once, [this] { m_volume->toggleMute(); });
    addKeys({Qt::Key_S}, Once, [this] { m_order->toggleShuffle(); });
    addKeys({Qt::Key_R}, Once, [this] { m_order->toggleRepeat(); });
    addKeys({Qt::Key_B, Qt::Key_Insert}, Once, [this] { m_seek->setBookmark(); });
    addKeys({Qt::Key_Delete, Qt::Key_Backspace}, Once, [this] { m_seek->removeNearestBookmark(); });
    addKeys({Qt::SHIFT | Qt::Key_Delete, Qt::SHIFT | Qt::Key_Backspace}, Once,
            [this] { m_seek->removeAllBookmarks(); });
}

void PlayingScreen::showPlayOrPause(bool playing)
{
    if (m_showsPause == playing)
        return;
    m_showsPause = playing;
    const QString shown = playing ? pauseButton : playButton;
    const QString hidden = playing ? playButton : pauseButton;
    const bool hadFocus = panel()->getFocus() == hidden;
    // A held button is released by this and reports a click; it asks for what has happened already.
    panel()->hideButton(hidden);
    if (hadFocus)
        panel()->showFocus(shown);
    else
        panel()->showNormal(shown);
}

void PlayingScreen::enableSteps(bool enable)
{
    if (m_stepsEnabled == enable)
        return;
    m_stepsEnabled = enable;
    for (const QString& button : {prevButton, nextButton}) {
        if (enable)
            panel()->showNormal(button);
        else
            panel()->disableButton(button);
    }
}
