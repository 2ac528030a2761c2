#include "skinbase/skinbase.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{

// A skin directory whose config file the fuzzer writes; its pictures are sound.
class Skin
{
public:
    Skin()
    {
        qputenv("QPEDIR", m_directory.path().toUtf8());
        QDir(m_directory.path()).mkpath("pics/fuzz");
        QImage picture(40, 10, QImage::Format_ARGB32);
        picture.fill(0x80ff00ffU);
        picture.save(m_directory.filePath("pics/fuzz/a.png"));
    }
    void writeConfig(const unsigned char* data, size_t size)
    {
        QFile file(m_directory.filePath("pics/fuzz/config"));
        if (file.open(QIODevice::WriteOnly))
            file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }

private:
    QTemporaryDir m_directory;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    static int argc = 1;
    static char programName[] = "fuzz_panel";
    static char* argv[] = {programName, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(argc, argv);
    static Skin skin;
    skin.writeConfig(data, size);

    SkinBase panel(nullptr, "fuzz");
    panel.do_configloading("A");
    panel.setAlphaOverride(100);
    panel.focusNextButton();
    panel.pressButton(panel.getFocus());
    panel.grab();
    panel.releaseButton(panel.getFocus());
    return 0;
}
