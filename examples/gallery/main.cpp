#include "gallerywindow.h"
#include "qtopia/qpeapplication.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace
{

struct Options {
    QString skin;
    QString page;
    QString screenshot;
};

Options readOptions(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows every widget of SkinWidgets in each of its states."));
    parser.addHelpOption();
    const QCommandLineOption skin(QStringLiteral("skin"), QStringLiteral("The skin to show."), QStringLiteral("name"),
                                  QStringLiteral("night"));
    const QCommandLineOption page(QStringLiteral("page"), QStringLiteral("The page to begin with."),
                                  QStringLiteral("name"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Write a picture of all pages, or of the window with the page that is named, and quit."),
        QStringLiteral("file"));
    parser.addOptions({skin, page, screenshot});
    parser.process(application);
    return {parser.value(skin), parser.value(page), parser.value(screenshot)};
}

// Dark, so that skins drawn for dark screens do not stand on white.
void setLook()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x12, 0x16, 0x1e));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x21, 0x2c));
    palette.setColor(QPalette::Button, QColor(0x26, 0x2e, 0x3c));
    palette.setColor(QPalette::WindowText, QColor(0xe8, 0xed, 0xf4));
    palette.setColor(QPalette::Text, QColor(0xe8, 0xed, 0xf4));
    palette.setColor(QPalette::ButtonText, QColor(0xe8, 0xed, 0xf4));
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0xa8, 0xba));
    palette.setColor(QPalette::Highlight, QColor(0xe0, 0x7a, 0x2c));
    palette.setColor(QPalette::HighlightedText, QColor(0x12, 0x16, 0x1e));
    QApplication::setPalette(palette);
    QFont font(QStringLiteral("sans-serif"));
    font.setPointSizeF(10.5);
    QApplication::setFont(font);
}

int fail(const QString& message)
{
    QTextStream(stderr) << message << Qt::endl;
    return 1;
}

int writeScreenshot(GalleryWindow& window, const Options& options)
{
    window.show();
    QCoreApplication::processEvents();
    const QPixmap picture = options.page.isEmpty() ? window.pictureOfAllPages() : window.picture();
    if (!picture.save(options.screenshot))
        return fail(QStringLiteral("cannot write %1").arg(options.screenshot));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QPEApplication application(argc, argv);
    // The stand-alone controls look for their pictures under the application's name; those that ship are the player's.
    application.setObjectName(QStringLiteral("skinplayer"));
    const Options options = readOptions(application);
    setLook();
    GalleryWindow window(options.skin);
    if (!options.page.isEmpty() && !window.choosePage(options.page))
        return fail(QStringLiteral("no page is called %1").arg(options.page));
    if (!options.screenshot.isEmpty())
        return writeScreenshot(window, options);
    window.show();
    return QApplication::exec();
}
