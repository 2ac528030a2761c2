#include "qtopia/qpeapplication.h"
#include "qtopia/resource.h"
#include "scroll/scrollbarskin.h"
#include "skinbase/skinbase.h"
#include "toolkit/builtinpictures.h"

#include <QTextStream>

#include <set>

namespace
{

bool check(bool holds, const QString& what)
{
    if (!holds)
        QTextStream(stderr) << "failed: " << what << Qt::endl;
    return holds;
}

QImage pictureOf(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

bool hasMoreThanOneColour(const QImage& picture)
{
    std::set<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            colours.insert(picture.pixel(x, y));
    return colours.size() > 1;
}

// The skin that ships with the library, found wherever the library is.
bool panelShowsItsSkin(SkinBase& panel)
{
    const QPixmap background = Resource::loadPixmap(QStringLiteral("night/player_bg"));
    const QImage drawn = pictureOf(panel);
    return check(!background.isNull(), "the skin below " + QPEApplication::qpeDir()) &&
           check(drawn.size() == background.size(), QStringLiteral("the panel has the size of its background")) &&
           check(hasMoreThanOneColour(drawn), QStringLiteral("the background is drawn")) &&
           check(drawn != background.toImage().convertToFormat(QImage::Format_RGB32),
                 QStringLiteral("the buttons are drawn on it"));
}

bool panelTellsOfClicks(SkinBase& panel)
{
    QString clicked;
    QObject::connect(&panel, &SkinBase::button_clicked,
                     [&](const QObject*, const QString& name) { clicked += name + QLatin1Char(' '); });
    panel.pressButton(QStringLiteral("stop"));
    panel.releaseButton(QStringLiteral("stop"));
    return check(clicked == QLatin1String("stop "), "one click of the button stop, not: " + clicked);
}

bool builtinPicturesAreThere()
{
    ScrollBarSkin bar(0, 100, 1, 10, 0, nullptr, "bar");
    bar.resize(bar.sizeHint().width(), 120);
    return check(!QImage::fromData(skinwidgets::findBuiltinImage("close_normal")).isNull(),
                 QStringLiteral("a built-in picture")) &&
           check(hasMoreThanOneColour(pictureOf(bar)), QStringLiteral("the scroll bar is drawn"));
}

} // namespace

int main(int argc, char** argv)
{
    QPEApplication application(argc, argv);
    SkinBase panel(nullptr, "night");
    panel.do_configloading(QStringLiteral("Player"));
    panel.setAlphaOverride(255);
    panel.show();
    return panelShowsItsSkin(panel) && panelTellsOfClicks(panel) && builtinPicturesAreThere() ? 0 : 1;
}
