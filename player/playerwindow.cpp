#include "player/playerwindow.h"

#include "media/sliderskin.h"
#include "media/timeskin.h"
#include "media/volumeskin.h"
#include "player/seekcontrol.h"
#include "player/volumecontrol.h"
#include "qtopia/config.h"
#include "qtopia/qpeapplication.h"
#include "skinbase/skinbase.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <cstdio>

namespace
{

const QString playButton = QStringLiteral("play");
const QString pauseButton = QStringLiteral("pause");
const QString prevButton = QStringLiteral("prev");
const QString nextButton = QStringLiteral("next");

// A first volume that leaves the user room for louder.
constexpr int startVolume = 70;
constexpr int volumeStep = 5;
constexpr qint64 seekStep = 10000;

int coordinate(const Config& config, const QString& key)
{
    return std::clamp(config.readNumEntry(key), -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

} // namespace

PlayerWindow::PlayerWindow(const QString& skin, QWidget* parent) : QWidget(parent)
{
    setObjectName(skin);
    m_panel = new SkinBase(this, "panel");
    m_panel->do_configloading(QStringLiteral("Player"));
    m_panel->setAlphaOverride(255);
    setFixedSize(m_panel->size());
    createMediaWidgets();
    m_playback.setVolume(startVolume);
    m_seek = std::make_unique<SeekControl>(&m_playback, m_seekSlider, m_timeDisplay);
    m_volume = std::make_unique<VolumeControl>(&m_playback, m_volumePanel);

    m_actions = {
        {prevButton, [this] { m_playback.previous(); }}, {playButton, [this] { m_playback.play(); }},
        {pauseButton, [this] { m_playback.pause(); }},   {QStringLiteral("stop"), [this] { m_playback.stop(); }},
        {nextButton, [this] { m_playback.next(); }},     {QStringLiteral("open"), [this] { chooseFiles(); }},
    };
    connect(m_panel, &SkinBase::button_clicked, this, &PlayerWindow::buttonClicked);
    connect(&m_playback, &Playback::playingChanged, this, &PlayerWindow::playingChanged);
    connect(&m_playback, &Playback::currentChanged, this, &PlayerWindow::currentChanged);
    connect(&m_playback, &Playback::fileFailed, this, &PlayerWindow::fileFailed);

    createShortcuts();
    m_panel->hideButton(pauseButton);
    m_panel->showFocus(playButton);
    m_panel->setFocus();
    enableSteps(false);
    updateTitle();
}

PlayerWindow::~PlayerWindow() = default;

template <typename Widget>
Widget* PlayerWindow::createOnPanel(const Config& screen, const QString& key, const char* group)
{
    const QString x = key + QLatin1String("_x");
    const QString y = key + QLatin1String("_y");
    if (!screen.hasKey(x) || !screen.hasKey(y))
        return nullptr;
    auto widget = std::make_unique<Widget>(m_panel, group);
    if (widget->size().isEmpty())
        return nullptr;
    widget->move(coordinate(screen, x), coordinate(screen, y));
    widget->setAlphaOverride(255);
    widget->setBackgroundPixmap(*m_panel->backgroundPixmap());
    return widget.release();
}

void PlayerWindow::createMediaWidgets()
{
    if (!m_panel->backgroundPixmap())
        return;
    Config screen(QPEApplication::qpeDir() + QStringLiteral("pics/%1/config").arg(objectName()), Config::File);
    screen.setGroup(QStringLiteral("Screen"));
    m_seekSlider = createOnPanel<SliderSkin>(screen, QStringLiteral("seek"), "Seek");
    m_timeDisplay = createOnPanel<TimeSkin>(screen, QStringLiteral("time"), "Time");
    m_volumePanel = createOnPanel<VolumeSkin>(screen, QStringLiteral("volume"), "Volume");
}

// The panel keeps every key that reaches it, so keys have to be caught on the way there.
void PlayerWindow::createShortcuts()
{
    const auto add = [this](std::initializer_list<QKeyCombination> keys, bool repeats,
                            const std::function<void()>& action) {
        for (const QKeyCombination key : keys) {
            auto* shortcut = new QShortcut(QKeySequence(key), this);
            shortcut->setAutoRepeat(repeats);
            connect(shortcut, &QShortcut::activated, this, action);
        }
    };
    constexpr bool once = false;
    constexpr bool whileHeld = true;
    add({Qt::Key_Escape}, once, [this] { close(); });
    add({Qt::Key_PageUp, Qt::SHIFT | Qt::Key_Left}, whileHeld, [this] { m_seek->seekBy(-seekStep); });
    add({Qt::Key_PageDown, Qt::SHIFT | Qt::Key_Right}, whileHeld, [this] { m_seek->seekBy(seekStep); });
    add({Qt::Key_Up}, whileHeld, [this] { m_volume->changeBy(volumeStep); });
    add({Qt::Key_Down}, whileHeld, [this] { m_volume->changeBy(-volumeStep); });
    add({Qt::Key_M}, once, [this] { m_volume->toggleMute(); });
    add({Qt::Key_B, Qt::Key_Insert}, once, [this] { m_seek->setBookmark(); });
    add({Qt::Key_Delete, Qt::Key_Backspace}, once, [this] { m_seek->removeNearestBookmark(); });
    add({Qt::SHIFT | Qt::Key_Delete, Qt::SHIFT | Qt::Key_Backspace}, once, [this] { m_seek->removeAllBookmarks(); });
}

QStringList PlayerWindow::skins()
{
    QDir pictures(QPEApplication::qpeDir() + QStringLiteral("pics"));
    QStringList names = pictures.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    const auto hasNoConfig = [&pictures](const QString& name) {
        return !QFileInfo(pictures.filePath(name + QStringLiteral("/config"))).isFile();
    };
    names.removeIf(hasNoConfig);
    return names;
}

bool PlayerWindow::isSkinned() const
{
    return !m_panel->size().isEmpty();
}

void PlayerWindow::chooseFiles()
{
    if (m_dialog) {
        m_dialog->raise();
        m_dialog->activateWindow();
        return;
    }
    m_dialog = new QFileDialog(this, tr("Choose what to play"), QFileInfo(m_playback.currentFile()).path());
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The platform's own dialog may be another process that a player on a bare screen does not have.
    m_dialog->setOption(QFileDialog::DontUseNativeDialog);
    m_dialog->setFileMode(QFileDialog::ExistingFiles);
    m_dialog->setNameFilters({tr("Sounds (*.ogg *.oga *.opus *.flac *.wav *.mp3 *.m4a)"), tr("All files (*)")});
    m_dialog->resize(m_dialog->sizeHint().boundedTo(screen()->availableSize()));
    connect(m_dialog, &QFileDialog::filesSelected, this, &PlayerWindow::filesChosen);
    connect(m_dialog, &QDialog::finished, this, &PlayerWindow::dialogClosed);
    m_dialog->show();
    m_dialog->activateWindow();
}

void PlayerWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // Without a window manager nobody else gives the window the keys, and the focused button would not show.
    activateWindow();
}

void PlayerWindow::buttonClicked(const QObject*, const QString& button)
{
    m_notice.clear();
    updateTitle();
    if (const auto action = m_actions.value(button))
        action();
}

void PlayerWindow::playingChanged(bool playing)
{
    showPlayOrPause(playing);
}

void PlayerWindow::currentChanged(const QString&)
{
    enableSteps(m_playback.files().size() > 1);
    updateTitle();
}

void PlayerWindow::fileFailed(const QString& file, const QString& reason)
{
    if (!m_reportedFiles.contains(file)) {
        m_reportedFiles.insert(file);
        std::fprintf(stderr, "skinplayer: cannot play %s: %s\n", qPrintable(file), qPrintable(reason));
    }
    m_notice = tr("cannot play %1").arg(QFileInfo(file).fileName());
    updateTitle();
}

void PlayerWindow::filesChosen(const QStringList& files)
{
    m_notice.clear();
    m_playback.open(files);
}

void PlayerWindow::dialogClosed()
{
    activateWindow();
}

void PlayerWindow::showPlayOrPause(bool playing)
{
    if (m_showsPause == playing)
        return;
    m_showsPause = playing;
    const QString shown = playing ? pauseButton : playButton;
    const QString hidden = playing ? playButton : pauseButton;
    const bool hadFocus = m_panel->getFocus() == hidden;
    // A held button is released by this and reports a click; it asks for what has happened already.
    m_panel->hideButton(hidden);
    if (hadFocus)
        m_panel->showFocus(shown);
    else
        m_panel->showNormal(shown);
}

void PlayerWindow::enableSteps(bool enable)
{
    if (m_stepsEnabled == enable)
        return;
    m_stepsEnabled = enable;
    for (const QString& button : {prevButton, nextButton}) {
        if (enable)
            m_panel->showNormal(button);
        else
            m_panel->disableButton(button);
    }
}

void PlayerWindow::updateTitle()
{
    const QString file = QFileInfo(m_playback.currentFile()).fileName();
    QStringList parts{file, m_notice, QStringLiteral("skinplayer")};
    parts.removeAll(QString());
    setWindowTitle(parts.join(QStringLiteral(" - ")));
}
