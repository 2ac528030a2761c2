#include "player/screens/playlistscreen.h"

#include "player/playback.h"
#include "player/playlist/playlistloader.h"
#include "player/playlist/playlistview.h"
#include "player/skinfiles.h"
#include "skinbase/skinbase.h"

#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QShortcut>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace
{

const QString closeButton = QStringLiteral("close");
const QString addButtonName = QStringLiteral("add");
const QString cancelButton = QStringLiteral("cancel");
const QString removeButton = QStringLiteral("remove");
const QString saveButton = QStringLiteral("save");
const QString clearButton = QStringLiteral("clear");

// Shorter than typing is felt, longer than a held key repeats.
constexpr auto filterDelay = 60ms;
constexpr int mostFilterLength = 200;
// Pixels.
constexpr int nameSize = 13;
constexpr int labelSize = 11;
constexpr int leastRowHeight = 16;
constexpr int mostRowHeight = 200;

QFont sized(QFont font, int pixels)
{
    font.setPixelSize(pixels);
    return font;
}

// Null for one that is larger than a row could show.
QPixmap markFrom(const QString& file)
{
    QImageReader reader(file);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > mostRowHeight || size.height() > mostRowHeight)
        return QPixmap();
    return QPixmap::fromImage(reader.read());
}

PlaylistLook lookFrom(const Config& group, const QWidget* widget)
{
    PlaylistLook look;
    look.text = skinfiles::color(group, QStringLiteral("text_color"), look.text);
    look.label = skinfiles::color(group, QStringLiteral("label_color"), look.label);
    look.accent = skinfiles::color(group, QStringLiteral("accent_color"), look.accent);
    look.labelFont = sized(widget->font(), labelSize);
    look.rowHeight =
        std::clamp(group.readNumEntry(QStringLiteral("row_height"), look.rowHeight), leastRowHeight, mostRowHeight);
    const QString mark = group.readEntry(QStringLiteral("mark"));
    if (!mark.isEmpty())
        look.mark = markFrom(skinfiles::path(widget, mark));
    return look;
}

void setTextColor(QWidget* widget, const QColor& color)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::Text, color);
    palette.setColor(QPalette::Base, Qt::transparent);
    widget->setPalette(palette);
}

QString number(int value)
{
    return QLocale().toString(value);
}

} // namespace

PlaylistScreen::PlaylistScreen(Playback* playback, PlaylistLoader* loader, QWidget* parent)
    : Screen("Playlist", parent),
      m_playback(playback),
      m_loader(loader),
      m_view(new PlaylistView(playback, this, "playlist"))
{
    const Config group = skinfiles::group(this, QStringLiteral("Playlist"));
    createView(group);
    createTexts(group);
    createFilter(group);
    addButtons();
    addAllKeys();
    panel()->showFocus(addButtonName);

    m_filterTimer.setObjectName(QStringLiteral("filter playlist"));
    m_filterTimer.setSingleShot(true);
    connect(&m_filterTimer, &QTimer::timeout, this, &PlaylistScreen::applyFilter);
    m_updateTimer.setObjectName(QStringLiteral("update playlist screen"));
    m_updateTimer.setSingleShot(true);
    connect(&m_updateTimer, &QTimer::timeout, this, &PlaylistScreen::refresh);

    connect(this, &Screen::operated, this, &PlaylistScreen::operate);
    connect(m_view, qOverload<>(&ListBoxSkin::selectionChanged), this, &PlaylistScreen::operate);
    connect(m_view, &PlaylistView::shownChanged, this, &PlaylistScreen::updateLater);
    connect(m_view, &PlaylistView::entryChosen, this, [this](int index) { m_playback->playAt(index); });
    connect(playback->playlist(), &Playlist::countChanged, this, &PlaylistScreen::updateLater);
    connect(loader, &PlaylistLoader::progressed, this, &PlaylistScreen::updateLater);
    refresh();
}

PlaylistScreen::~PlaylistScreen() = default;

void PlaylistScreen::createView(const Config& group)
{
    const QRect place = skinfiles::rect(group, QStringLiteral("list"));
    m_view->setGeometry(place.isEmpty() ? panel()->rect() : place);
    m_view->setFont(sized(font(), nameSize));
    m_view->setLook(lookFrom(group, this));
    m_view->setAlphaOverride(255);
    if (panel()->backgroundPixmap())
        m_view->setBackgroundPixmap(*panel()->backgroundPixmap());
}

void PlaylistScreen::createTexts(const Config& group)
{
    const PlaylistLook look;
    createTitle(group, tr("Playlist"), look.selected);
    m_status = createLabel(group, QStringLiteral("status"));
    if (m_status) {
        m_status->setFont(sized(font(), labelSize));
        m_status->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setTextColor(m_status, skinfiles::color(group, QStringLiteral("text_color"), look.text));
    }
    m_hint = new QLabel(this);
    m_hint->setGeometry(m_view->geometry());
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setFont(sized(font(), nameSize));
    setTextColor(m_hint, skinfiles::color(group, QStringLiteral("label_color"), look.label));
}

void PlaylistScreen::createFilter(const Config& group)
{
    const QRect place = skinfiles::rect(group, QStringLiteral("filter"));
    if (place.isEmpty())
        return;
    m_filter = new QLineEdit(this);
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setGeometry(place);
    m_filter->setFrame(false);
    m_filter->setMaxLength(mostFilterLength);
    m_filter->setFont(sized(font(), nameSize));
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setContextMenuPolicy(Qt::NoContextMenu);
    const PlaylistLook look;
    setTextColor(m_filter, skinfiles::color(group, QStringLiteral("text_color"), look.text));
    QPalette palette = m_filter->palette();
    palette.setColor(QPalette::PlaceholderText, skinfiles::color(group, QStringLiteral("label_color"), look.label));
    palette.setColor(QPalette::Highlight, skinfiles::color(group, QStringLiteral("accent_color"), look.accent));
    m_filter->setPalette(palette);
    connect(m_filter, &QLineEdit::textChanged, this, &PlaylistScreen::filterChanged);
}

void PlaylistScreen::addButtons()
{
    addButton(closeButton, [this] { emit closeRequested(); });
    addButton(addButtonName, [this] { emit addRequested(); });
    addButton(cancelButton, [this] { m_loader->cancel(); });
    addButton(removeButton, [this] {
        removeSelected();
        toList();
    });
    addButton(saveButton, [this] { emit saveRequested(); });
    addButton(clearButton, [this] { clearFilter(); });
}

void PlaylistScreen::addAllKeys()
{
    addKeys({Qt::Key_Escape}, Once, [this] { escape(); });
    addKeys({Qt::Key_Back}, Once, [this] { emit closeRequested(); });
    addKeys({Qt::Key_Slash, Qt::CTRL | Qt::Key_F}, Once, [this] { toFilter(); });
    addKeys({Qt::Key_Delete}, Once, [this] { removeSelected(); });
    addKeys({Qt::Key_Insert}, Once, [this] { emit addRequested(); });
    addKeys({Qt::CTRL | Qt::Key_S}, Once, [this] {
        if (!m_playback->playlist()->isEmpty())
            emit saveRequested();
    });
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right})
        addKeyOn(m_view, key, [this] { panel()->setFocus(); });
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down})
        addKeyOn(panel(), key, [this] { toList(); });
    if (!m_filter)
        return;
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter})
        addKeyOn(m_filter, key, [this] { toList(); });
}

void PlaylistScreen::addKeyOn(QWidget* widget, Qt::Key key, const Action& action)
{
    auto* shortcut = new QShortcut(QKeySequence(key), widget);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
}

void PlaylistScreen::showEvent(QShowEvent* event)
{
    Screen::showEvent(event);
    if (event->spontaneous())
        return;
    m_view->showCurrentEntry();
    toList();
}

void PlaylistScreen::toFilter()
{
    if (!m_filter)
        return;
    m_filter->setFocus();
    m_filter->selectAll();
}

void PlaylistScreen::toList()
{
    m_view->setFocus();
}

void PlaylistScreen::filterChanged()
{
    m_filterTimer.start(filterDelay);
    updateLater();
}

void PlaylistScreen::applyFilter()
{
    m_view->setFilter(m_filter->text());
    operate();
}

void PlaylistScreen::clearFilter()
{
    if (m_filter && !m_filter->text().isEmpty()) {
        m_filter->clear();
        m_filterTimer.stop();
        applyFilter();
    }
    toList();
}

void PlaylistScreen::escape()
{
    if (m_filter && (m_filter->hasFocus() || !m_filter->text().isEmpty()))
        clearFilter();
    else
        emit closeRequested();
}

void PlaylistScreen::removeSelected()
{
    m_playback->playlist()->remove(m_view->selectedEntries());
}

void PlaylistScreen::showMessage(const QString& message)
{
    m_message = message;
    updateLater();
}

void PlaylistScreen::operate()
{
    m_message.clear();
    updateLater();
}

// Begun anew each time, the timer would not get its turn while something is read.
void PlaylistScreen::updateLater()
{
    if (!m_updateTimer.isActive())
        m_updateTimer.start(0);
}

void PlaylistScreen::refresh()
{
    m_statusText = m_message;
    if (m_message.isEmpty()) {
        const QString place = m_loader->placeName();
        const QString reading = place.isEmpty() ? tr("Reading") : tr("Reading %1").arg(place);
        m_statusText =
            m_loader->isLoading() ? tr("%1: %2 found").arg(reading, number(m_loader->foundCount())) : entriesText();
    }
    if (m_status)
        m_status->setText(m_status->fontMetrics().elidedText(m_statusText, Qt::ElideMiddle, m_status->width()));
    const bool isEmpty = m_playback->playlist()->isEmpty();
    m_hint->setText(isEmpty ? tr("Nothing here yet: + adds files and folders") : tr("No name matches"));
    m_hint->setVisible(m_view->count() == 0 && !m_loader->isLoading());
    updateButtons();
}

QString PlaylistScreen::entriesText() const
{
    const int count = m_playback->playlist()->count();
    const int shown = static_cast<int>(m_view->count());
    const int selected = m_view->selectedCount();
    QString text = count == 1 ? tr("1 entry") : tr("%1 entries").arg(number(count));
    if (shown < count)
        text = tr("%1 of %2").arg(number(shown), text);
    return selected > 1 ? tr("%1, %2 selected").arg(text, number(selected)) : text;
}

void PlaylistScreen::updateButtons()
{
    const bool loads = m_loader->isLoading();
    const bool hadFocus = panel()->getFocus() == (loads ? addButtonName : cancelButton);
    setAvailable(addButtonName, !loads, Hide);
    setAvailable(cancelButton, loads, Hide);
    if (hadFocus)
        panel()->showFocus(loads ? cancelButton : addButtonName);
    setAvailable(removeButton, m_view->selectedCount() > 0, Disable);
    setAvailable(saveButton, !m_playback->playlist()->isEmpty(), Disable);
    setAvailable(clearButton, m_filter && !m_filter->text().isEmpty(), Hide);
}

void PlaylistScreen::setAvailable(const QString& button, bool available, Absence absence)
{
    if (m_absent.contains(button) != available)
        return;
    if (available) {
        m_absent.remove(button);
        panel()->showNormal(button);
        return;
    }
    m_absent.insert(button);
    if (absence == Hide)
        panel()->hideButton(button);
    else
        panel()->disableButton(button);
}
