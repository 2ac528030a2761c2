#include "qtopia/qpeapplication.h"

#include <QDir>
#include <QTextStream>

// Prints the data directory; with an argument, after it went to that directory.
int main(int argc, char** argv)
{
    const QPEApplication application(argc, argv);
    if (argc > 1 && !QDir::setCurrent(QFile::decodeName(argv[1])))
        return 1;
    QTextStream(stdout) << QPEApplication::qpeDir();
    return 0;
}
