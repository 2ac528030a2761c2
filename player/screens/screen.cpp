#include "player/screens/screen.h"

#include "player/skinfiles.h"
#include "skinbase/skinbase.h"

#include <QKeySequence>
#include <QLabel>
#include <QPointer>
#include <QShortcut>
#include <QShowEvent>

namespace
{

// Pixels.
constexpr int titleSize = 13;

} // namespace

Screen::Screen(const char* section, QWidget* parent) : QWidget(parent), m_panel(new SkinBase(this, "panel"))
{
    m_panel->do_configloading(QString::fromLatin1(section));
    m_panel->setAlphaOverride(255);
    connect(m_panel, &SkinBase::button_clicked, this, &Screen::runButton);
}

Screen::~Screen() = default;

bool Screen::isSkinned() const
{
    return !m_panel->size().isEmpty();
}

void Screen::addButton(const QString& name, const Action& action)
{
    m_buttons.insert(name, action);
}

QLabel* Screen::createLabel(const Config& group, const QString& key)
{
    const QRect place = skinfiles::rect(group, key);
    if (place.isEmpty())
        return nullptr;
    auto* label = new QLabel(panel());
    label->setGeometry(place);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void Screen::createTitle(const Config& group, const QString& text, const QColor& color)
{
    QLabel* title = createLabel(group, QStringLiteral("title"));
    if (!title)
        return;
    title->setText(text);
    QFont bold = title->font();
    bold.setPixelSize(titleSize);
    bold.setBold(true);
    title->setFont(bold);
    QPalette palette = title->palette();
    palette.setColor(QPalette::WindowText, skinfiles::color(group, QStringLiteral("title_color"), color));
    title->setPalette(palette);
}

// The panel keeps every key that reaches it, so keys have to be caught on the way there.
void Screen::addKeys(std::initializer_list<QKeyCombination> keys, KeyRepeat repeat, const Action& action)
{
    for (const QKeyCombination key : keys) {
        auto* shortcut = new QShortcut(QKeySequence(key), this);
        shortcut->setAutoRepeat(repeat == WhileHeld);
        connect(shortcut, &QShortcut::activated, this, action);
    }
}

void Screen::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        m_panel->setFocus();
}

void Screen::runButton(const QObject*, const QString& name)
{
    const QPointer<Screen> self(this);
    emit operated();
    if (!self)
        return;
    // A copy, for the action may change what the button does.
    if (const Action action = m_buttons.value(name))
        action();
}
