#include "qtopia/config.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    static const QTemporaryDir directory;
    const QString path = directory.filePath("config");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    file.close();

    Config config(path, Config::File);
    for (const char* group : {"", "A", "Player"}) {
        config.setGroup(group);
        config.readEntry("name");
        config.readNumEntry("count");
    }
    return 0;
}
