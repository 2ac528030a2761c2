#include "buttonspage.h"

#include "skinbase/skinbase.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

const char section[] = "Player";

struct State {
    const char* caption;
    SkinButtonState state;
};

const State states[] = {
    {"Normal", Normal}, {"Pressed", Pressed}, {"Focus", Focus}, {"Disabled", Disabled}, {"Hidden", Hidden},
};

// The player panel with one button in a given state. It shows the focused button as the panel with the keyboard focus
// does, which only one widget of a window can have.
class ShownPanel : public SkinBase
{
public:
    ShownPanel(QWidget* parent, const QString& shown, SkinButtonState state) : SkinBase(parent)
    {
        do_configloading(QLatin1String(section));
        setAlphaOverride(255);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        // Buttons of other names may lie at the same place.
        for (SkinButton* button : buttons)
            button->state = button->name == shown ? state : Hidden;
    }

    QRect buttonRect(const QString& name) const
    {
        const SkinButton* button = buttonMap.value(name);
        return button ? button->rect() : QRect();
    }

    void drawButtons(QPixmap* target, const QRect& area) override
    {
        for (const SkinButton* button : std::as_const(buttonMap))
            if (button->state != Hidden)
                drawClippedImage(target, button->stateImage[button->state], area, button->rect());
    }
};

class NamedPanel : public SkinBase
{
public:
    explicit NamedPanel(QWidget* parent) : SkinBase(parent) { do_configloading(QLatin1String(section)); }

    QStringList names() const
    {
        QStringList result;
        for (const SkinButton* button : buttons)
            result += button->name;
        return result;
    }
};

// The piece of the panel around a button.
QWidget* makeSample(QWidget* parent, const QString& name, SkinButtonState state)
{
    constexpr int margin = 7;
    auto* const window = new QWidget(parent);
    auto* const panel = new ShownPanel(window, name, state);
    const QRect piece = panel->buttonRect(name).marginsAdded({margin, margin, margin, margin}) & panel->rect();
    window->setFixedSize(piece.size());
    panel->move(-piece.topLeft());
    return window;
}

} // namespace

ButtonsPage::ButtonsPage(QWidget* parent)
    : Page(tr("Panel buttons"),
           tr("Every button of a panel is a strip of four pictures. Which one shows is the button's state; a hidden "
              "button leaves the panel's background."),
           parent)
{
    addStates();
    addPanel();
}

void ButtonsPage::addStates()
{
    QGridLayout* const table = addTable(tr("States"), 0, 0);
    QWidget* const card = table->parentWidget();
    const QStringList names = NamedPanel(card).names();
    for (int column = 0; column < int(std::size(states)); ++column)
        table->addWidget(makeLabel(tr(states[column].caption), card), 0, column + 1, Qt::AlignCenter);
    for (int row = 0; row < names.size(); ++row) {
        table->addWidget(makeLabel(names[row], card), row + 1, 0, Qt::AlignRight | Qt::AlignVCenter);
        for (int column = 0; column < int(std::size(states)); ++column)
            table->addWidget(makeSample(card, names[row], states[column].state), row + 1, column + 1, Qt::AlignCenter);
    }
}

void ButtonsPage::addPanel()
{
    auto* const panel =
        new SkinBase(addCard(tr("A panel to operate: press buttons, or use Left, Right and Return"), 0, 1), "Player");
    panel->do_configloading(QLatin1String(section));
    panel->setAlphaOverride(255);
    panel->disableButton(QStringLiteral("stop"));
    panel->hideButton(QStringLiteral("pause"));
    connect(panel, &SkinBase::button_clicked, panel, [panel](const QObject*, const QString& name) {
        if (name != QLatin1String("play") && name != QLatin1String("pause"))
            return;
        panel->hideButton(name);
        panel->showFocus(name == QLatin1String("play") ? QStringLiteral("pause") : QStringLiteral("play"));
    });
    placeIn(panel);
}
