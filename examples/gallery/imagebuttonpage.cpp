#include "imagebuttonpage.h"

#include "controls/imagebutton.h"
#include "ground.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

struct Example {
    const char* caption;
    const char* name;
    bool toggle;
    bool on;
    // Where the button stands on the player's background, which shows around it.
    QRect place;
};

constexpr QRect closePlace(450, 1, 20, 21);
constexpr QRect shufflePlace(22, 214, 32, 26);
constexpr QRect repeatPlace(58, 214, 32, 26);

const Example examples[] = {
    {"Close", "close", false, false, closePlace},         {"Shuffle, off", "shuffle", true, false, shufflePlace},
    {"Shuffle, on", "shuffle", true, true, shufflePlace}, {"Repeat, off", "repeat", true, false, repeatPlace},
    {"Repeat, on", "repeat", true, true, repeatPlace},
};

const char* const states[] = {"Normal", "Pressed", "Focus", "Disabled"};

// A button in a state that it keeps.
class ShownButton : public ImageButton
{
public:
    ShownButton(QWidget* parent, const Example& example, int shown) : ImageButton(parent, example.name)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        if (example.toggle)
            setToggle();
        setButtonImage(true);
        changeToggleState(example.on);
        state = shown;
    }
};

QWidget* makeSample(QWidget* parent, const Example& example, int state)
{
    constexpr int margin = 6;
    const QPixmap screen = skinPicture(parent, QStringLiteral("player_bg"));
    const QRect piece = example.place.marginsAdded({margin, margin, margin, margin}) & screen.rect();
    auto* const ground = new Ground(screen.copy(piece), parent);
    auto* const button = new ShownButton(ground, example, state);
    button->setGeometry(example.place.translated(-piece.topLeft()));
    return ground;
}

} // namespace

ImageButtonPage::ImageButtonPage(QWidget* parent)
    : Page(tr("Image button"),
           tr("A button of its own, made of one picture for each state. A toggle button has a second set of pictures "
              "for "
              "the position on."),
           parent)
{
    addStates();
    addPanel();
}

void ImageButtonPage::addStates()
{
    QGridLayout* const table = addTable(tr("States"), 0, 0);
    QWidget* const card = table->parentWidget();
    for (int state = 0; state < int(std::size(states)); ++state)
        table->addWidget(makeLabel(tr(states[state]), card), 0, state + 1, Qt::AlignCenter);
    int row = 1;
    for (const Example& example : examples) {
        table->addWidget(makeLabel(tr(example.caption), card), row, 0, Qt::AlignRight | Qt::AlignVCenter);
        for (int state = 0; state < int(std::size(states)); ++state)
            table->addWidget(makeSample(card, example, state), row, state + 1, Qt::AlignCenter);
        ++row;
    }
}

void ImageButtonPage::addPanel()
{
    QWidget* const place = addCard(tr("To operate: tap the buttons, or use Tab and Return"), 0, 1);
    auto* const ground = new Ground(skinPicture(place, QStringLiteral("player_bg")), place);
    auto* const shuffle = new ImageButton(ground, "shuffle");
    auto* const repeat = new ImageButton(ground, "repeat");
    shuffle->setGeometry(shufflePlace);
    repeat->setGeometry(repeatPlace);
    for (ImageButton* const button : {shuffle, repeat}) {
        button->setToggle();
        button->setButtonImage(true);
    }
    auto* const close = new ImageButton(ground, "close");
    close->setGeometry(closePlace);
    close->setButtonImage(true);
    // The close button switches the two others off and on.
    connect(close, &ImageButton::clicked, repeat, [shuffle, repeat, enabled = true]() mutable {
        enabled = !enabled;
        shuffle->setEnabled(enabled);
        repeat->setEnabled(enabled);
    });
    placeIn(ground);
}
