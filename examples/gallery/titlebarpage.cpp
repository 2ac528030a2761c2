#include "titlebarpage.h"

#include "controls/imagebutton.h"
#include "controls/titlebar.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

// A bar whose close button keeps a state.
class ShownBar : public TitleBar
{
public:
    explicit ShownBar(QWidget* parent) : TitleBar(parent)
    {
        setFixedSize(size());
        setAttribute(Qt::WA_TransparentForMouseEvents);
        closeButton->setFocusPolicy(Qt::NoFocus);
    }
    // Exchanges the close button for one that shows nothing but the picture.
    void showCloseButton(int state)
    {
        struct Shown : ImageButton {
            Shown(QWidget* parent, int shown) : ImageButton(parent, "close")
            {
                setFocusPolicy(Qt::NoFocus);
                setButtonImage(true);
                state = shown;
            }
        };
        const QRect place = closeButton->geometry();
        delete closeButton;
        closeButton = new Shown(this, state);
        closeButton->setGeometry(place);
    }
};

void addRow(QGridLayout* table, int row, QLabel* caption, ShownBar* bar)
{
    table->addWidget(caption, row, 0, Qt::AlignRight | Qt::AlignVCenter);
    table->addWidget(bar, row, 1);
    table->setColumnStretch(2, 1);
}

} // namespace

TitleBarPage::TitleBarPage(QWidget* parent)
    : Page(tr("Title bar"),
           tr("A strip of 480 pixels with a title, a file name after it and a close button. Its pictures are found "
              "under "
              "the application's name."),
           parent)
{
    addTexts();
    addCloseButton();
    addLive();
}

void TitleBarPage::addTexts()
{
    struct Texts {
        QString caption;
        QString title;
        QString fileName;
    };
    const Texts examples[] = {
        {tr("As built"), {}, {}},
        {tr("Title"), tr("Night Walk"), {}},
        {tr("Title and file name"), tr("Night Walk"), QStringLiteral("night_walk.ogg")},
        {tr("File name alone"), {}, QStringLiteral("night_walk.ogg")},
    };
    QGridLayout* const table = addTable(tr("Texts"), 0, 0);
    QWidget* const card = table->parentWidget();
    int row = 0;
    for (const Texts& example : examples) {
        auto* const bar = new ShownBar(card);
        bar->setTitleBarText(example.title);
        bar->setFileNameText(example.fileName);
        addRow(table, row++, makeLabel(example.caption, card), bar);
    }
    auto* const large = new ShownBar(card);
    QFont font = large->font();
    font.setBold(true);
    font.setPixelSize(17);
    large->setFont(font);
    large->setTitleBarText(tr("Night Walk"));
    large->setFileNameText(QStringLiteral("night_walk.ogg"));
    addRow(table, row, makeLabel(tr("Another font"), card), large);
}

void TitleBarPage::addCloseButton()
{
    const QString states[] = {tr("Normal"), tr("Pressed"), tr("Focus"), tr("Disabled")};
    QGridLayout* const table = addTable(tr("Close button"), 1, 0);
    QWidget* const card = table->parentWidget();
    for (int state = 0; state < int(std::size(states)); ++state) {
        auto* const bar = new ShownBar(card);
        bar->setTitleBarText(tr("Night Walk"));
        bar->showCloseButton(state);
        addRow(table, state, makeLabel(states[state], card), bar);
    }
}

void TitleBarPage::addLive()
{
    QGridLayout* const table = addTable(tr("To operate"), 2, 0);
    QWidget* const card = table->parentWidget();
    auto* const bar = new TitleBar(card);
    bar->setFixedSize(bar->size());
    bar->setTitleBarText(tr("Clicks on the close button:"));
    bar->setFileNameText(QStringLiteral("0"));
    connect(bar, &TitleBar::exitClicked, bar,
            [bar, clicks = 0]() mutable { bar->setFileNameText(QString::number(++clicks)); });
    table->addWidget(bar, 0, 0);
    table->setColumnStretch(1, 1);
}
