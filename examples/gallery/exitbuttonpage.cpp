#include "exitbuttonpage.h"

#include "controls/whineexitbutton.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

constexpr QSize buttonSize(20, 21);
constexpr int zoom = 3;

// A button with one of its pictures, whatever happens to it.
class ShownButton : public WhineExitButton
{
public:
    ShownButton(QWidget* parent, int picture) : WhineExitButton(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        setFixedSize(buttonSize);
        setBuiltinPictures();
        const QPixmap* const pictures[] = {&normalPixmap, &focusPixmap, &pressedPixmap};
        setBackgroundPixmap(*pictures[picture]);
    }
};

} // namespace

ExitButtonPage::ExitButtonPage(QWidget* parent)
    : Page(tr("Exit button"),
           tr("A push button of three pictures, which an application fills in or takes from those that the library "
              "carries."),
           parent)
{
    addStates();
    addLive();
}

void ExitButtonPage::addStates()
{
    const QString states[] = {tr("Normal"), tr("Focus"), tr("Pressed")};
    QGridLayout* const table = addTable(tr("Built-in pictures, below them close up"), 0, 0);
    QWidget* const card = table->parentWidget();
    for (int state = 0; state < int(std::size(states)); ++state) {
        auto* const button = new ShownButton(card, state);
        auto* const close = new QLabel(card);
        close->setPixmap(button->grab().scaled(buttonSize * zoom));
        table->addWidget(makeLabel(states[state], card), 0, state, Qt::AlignCenter);
        table->addWidget(button, 1, state, Qt::AlignCenter);
        table->addWidget(close, 2, state, Qt::AlignCenter);
    }
}

void ExitButtonPage::addLive()
{
    QGridLayout* const table = addTable(tr("To operate"), 0, 1);
    QWidget* const card = table->parentWidget();
    auto* const button = new WhineExitButton(card, "exit");
    button->setFixedSize(buttonSize);
    button->setBuiltinPictures();
    QLabel* const clicks = makeLabel(QStringLiteral("0"), card);
    connect(button, &QAbstractButton::clicked, clicks, [clicks] { clicks->setNum(clicks->text().toInt() + 1); });
    table->addWidget(button, 0, 0, Qt::AlignCenter);
    table->addWidget(clicks, 1, 0, Qt::AlignCenter);
}
