#include "player/playerwindow.h"

#include "player/opendialog.h"
#include "player/playlist/m3u.h"
#include "player/playlist/soundtypes.h"
#include "player/skinfiles.h"
#include "skinbase/skinbase.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QScreen>
#include <QStackedLayout>

#include <cstdio>

namespace
{

// A first volume that leaves the user room for louder.
constexpr int startVolume = 70;

} // namespace

PlayerWindow::PlayerWindow(const QString& skin, QWidget* parent) : QWidget(parent), m_screens(new QStackedLayout(this))
{
    setObjectName(skin);
    m_playback.setVolume(startVolume);
    m_playing = new PlayingScreen(&m_playback, this);
    m_playlist = new PlaylistScreen(&m_playback, &m_loader, this);
    m_details = new DetailsScreen(&m_playback, this);
    addScreen(m_playing);
    addScreen(m_playlist);
    addScreen(m_details);
    setFixedSize(m_playing->panel()->size());

    connect(m_playing, &PlayingScreen::openRequested, this, &PlayerWindow::chooseFiles);
    connect(m_playing, &PlayingScreen::playlistRequested, this, &PlayerWindow::showPlaylist);
    connect(m_playlist, &PlaylistScreen::addRequested, this, &PlayerWindow::chooseMoreFiles);
    connect(m_playlist, &PlaylistScreen::saveRequested, this, &PlayerWindow::chooseSaveFile);
    connect(m_playing, &PlayingScreen::detailsRequested, this, &PlayerWindow::showDetails);
    connect(&m_playback, &Playback::currentChanged, this, &PlayerWindow::currentChanged);
    connect(&m_playback, &Playback::fileFailed, this, &PlayerWindow::fileFailed);
    connect(&m_loader, &PlaylistLoader::failed, this, [this](const QString& message) {
        std::fprintf(stderr, "skinplayer: %s\n", qPrintable(message));
        setNotice(message);
    });
    updateTitle();
}

PlayerWindow::~PlayerWindow()
{
    // They use the playback, which goes before what a widget's own destructor deletes.
    qDeleteAll(findChildren<Screen*>(Qt::FindDirectChildrenOnly));
}

QStringList PlayerWindow::skins()
{
    return skinfiles::names();
}

Screen* PlayerWindow::currentScreen() const
{
    return static_cast<Screen*>(m_screens->currentWidget());
}

void PlayerWindow::addScreen(Screen* screen)
{
    m_screens->addWidget(screen);
    connect(screen, &Screen::operated, this, &PlayerWindow::clearNotice);
    connect(screen, &Screen::closeRequested, this, [this, screen] {
        if (screen == m_playing)
            close();
        else
            showScreen(m_playing);
    });
}

void PlayerWindow::showScreen(Screen* screen)
{
    if (screen->isSkinned())
        m_screens->setCurrentWidget(screen);
}

void PlayerWindow::showDetails()
{
    showScreen(m_details);
}

void PlayerWindow::showPlaylist()
{
    showScreen(m_playlist);
}

void PlayerWindow::chooseFiles()
{
    if (raiseDialog())
        return;
    OpenDialog* dialog = createOpenDialog(tr("Choose what to play"));
    connect(dialog, &OpenDialog::chosen, this, [this](const QStringList& paths) {
        setNotice(QString());
        m_loader.open(paths);
    });
    openDialog(dialog);
}

void PlayerWindow::chooseMoreFiles()
{
    if (raiseDialog())
        return;
    OpenDialog* dialog = createOpenDialog(tr("Choose what to add"));
    connect(dialog, &OpenDialog::chosen, this, [this](const QStringList& paths) {
        setNotice(QString());
        m_loader.add(paths);
    });
    openDialog(dialog);
}

OpenDialog* PlayerWindow::createOpenDialog(const QString& title)
{
    return new OpenDialog(this, title, QFileInfo(m_playback.currentFile()).path());
}

void PlayerWindow::chooseSaveFile()
{
    if (raiseDialog())
        return;
    auto* dialog = new QFileDialog(this, tr("Save the playlist"), QFileInfo(m_playback.currentFile()).path());
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilters({soundtypes::saveFilter(), tr("All files (*)")});
    dialog->setDefaultSuffix(QStringLiteral("m3u8"));
    dialog->selectFile(tr("playlist") + QStringLiteral(".m3u8"));
    connect(dialog, &QFileDialog::fileSelected, this, &PlayerWindow::savePlaylist);
    openDialog(dialog);
}

void PlayerWindow::savePlaylist(const QString& file)
{
    const QString problem = m3u::write(file, m_playback.playlist()->entries());
    const QString name = QFileInfo(file).fileName();
    setNotice(problem.isEmpty() ? tr("saved as %1").arg(name) : tr("cannot save %1: %2").arg(name, problem));
}

bool PlayerWindow::raiseDialog()
{
    if (!m_dialog)
        return false;
    m_dialog->raise();
    m_dialog->activateWindow();
    return true;
}

void PlayerWindow::openDialog(QFileDialog* dialog)
{
    m_dialog = dialog;
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->resize(m_dialog->sizeHint().boundedTo(screen()->availableSize()));
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

void PlayerWindow::currentChanged()
{
    updateTitle();
}

void PlayerWindow::fileFailed(const QString& file, const QString& reason)
{
    if (!m_reportedFiles.contains(file)) {
        m_reportedFiles.insert(file);
        std::fprintf(stderr, "skinplayer: cannot play %s: %s\n", qPrintable(file), qPrintable(reason));
    }
    const QString name = QFileInfo(file).fileName();
    setNotice(tr("cannot play %1").arg(name));
    m_playing->showMessage(tr("Cannot play %1: %2").arg(name, reason));
}

void PlayerWindow::dialogClosed()
{
    activateWindow();
}

void PlayerWindow::setNotice(const QString& notice)
{
    m_notice = notice;
    m_playing->showMessage(notice);
    m_playlist->showMessage(notice);
    updateTitle();
}

void PlayerWindow::clearNotice()
{
    m_notice.clear();
    updateTitle();
}

void PlayerWindow::updateTitle()
{
    const QString file = QFileInfo(m_playback.currentFile()).fileName();
    QStringList parts{file, m_notice, QStringLiteral("skinplayer")};
    parts.removeAll(QString());
    setWindowTitle(parts.join(QStringLiteral(" - ")));
}
