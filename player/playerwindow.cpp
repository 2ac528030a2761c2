#include "player/playerwindow.h"

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
    m_details = new DetailsScreen(&m_playback, this);
    addScreen(m_playing);
    addScreen(m_details);
    setFixedSize(m_playing->panel()->size());

    connect(m_playing, &PlayingScreen::openRequested, this, &PlayerWindow::chooseFiles);
    connect(m_playing, &PlayingScreen::detailsRequested, this, &PlayerWindow::showDetails);
    connect(&m_playback, &Playback::currentChanged, this, &PlayerWindow::currentChanged);
    connect(&m_playback, &Playback::fileFailed, this, &PlayerWindow::fileFailed);
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
