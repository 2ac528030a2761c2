#ifndef SKINWIDGETS_TESTS_PLAYER_SOUNDFILES_H
#define SKINWIDGETS_TESTS_PLAYER_SOUNDFILES_H

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>

/* Files to play, made in a directory that goes away with this object. */
class SoundFiles
{
public:
    // A tone as 16-bit mono PCM.
    QString tone(const QString& name, int milliseconds) const
    {
        constexpr int rate = 8000;
        const int frames = rate * milliseconds / 1000;
        QByteArray wav;
        QDataStream out(&wav, QIODevice::WriteOnly);
        out.setByteOrder(QDataStream::LittleEndian);
        out.writeRawData("RIFF", 4);
        out << quint32(36 + 2 * frames);
        out.writeRawData("WAVEfmt ", 8);
        out << quint32(16) << quint16(1) << quint16(1) << quint32(rate) << quint32(2 * rate) << quint16(2)
            << quint16(16);
        out.writeRawData("data", 4);
        out << quint32(2 * frames);
        for (int i = 0; i < frames; ++i)
            out << qint16(8000 * std::sin(i * 0.3));
        return write(name, wav);
    }
    // A file that no backend can play.
    QString text(const QString& name) const { return write(name, "This is no sound.\n"); }
    QString path(const QString& name) const { return m_directory.filePath(name); }

private:
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }

    QTemporaryDir m_directory;
};

#endif
