#ifndef SKINWIDGETS_TESTS_PLAYER_SOUNDFILES_H
#define SKINWIDGETS_TESTS_PLAYER_SOUNDFILES_H

#include <QDataStream>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QtEndian>

#include <cmath>

/* Files to play, made in a directory that goes away with this object. */
class SoundFiles
{
public:
    // A tone as 16-bit mono PCM, with tags by their four-letter names in such files (INAM title, IART artist).
    QString tone(const QString& name, int milliseconds, const QHash<QByteArray, QByteArray>& tags = {}) const
    {
        return write(name, wave(milliseconds, tagList(tags)));
    }
    // The same with a title and the bytes of a cover picture, as an ID3 tag before it.
    QString toneWithCover(const QString& name, int milliseconds, const QByteArray& title, const QByteArray& cover) const
    {
        // Both begin with the encoding; before the picture stand its type, kind (3 is the front) and description.
        const QByteArray frames =
            frame("TIT2", '\0' + title) + frame("APIC", QByteArrayLiteral("\0image/png\0\3\0") + cover);
        const auto size = static_cast<quint32>(frames.size());
        QByteArray tag = QByteArrayLiteral("ID3\3\0\0");
        for (const int shift : {21, 14, 7, 0})
            tag += static_cast<char>(size >> shift & 0x7f);
        return write(name, tag + frames + wave(milliseconds, {}));
    }
    // A file that no backend can play.
    QString text(const QString& name) const { return write(name, "This is no sound.\n"); }
    // Any bytes, such as a text beside a sound.
    QString file(const QString& name, const QByteArray& bytes) const { return write(name, bytes); }
    QString path(const QString& name) const { return m_directory.filePath(name); }

private:
    static QByteArray wave(int milliseconds, const QByteArray& tags)
    {
        constexpr int rate = 8000;
        const int frames = rate * milliseconds / 1000;
        QByteArray wav;
        QDataStream out(&wav, QIODevice::WriteOnly);
        out.setByteOrder(QDataStream::LittleEndian);
        out.writeRawData("RIFF", 4);
        out << quint32(36 + tags.size() + 2 * frames);
        out.writeRawData("WAVEfmt ", 8);
        out << quint32(16) << quint16(1) << quint16(1) << quint32(rate) << quint32(2 * rate) << quint16(2)
            << quint16(16);
        out.writeRawData(tags.constData(), static_cast<int>(tags.size()));
        out.writeRawData("data", 4);
        out << quint32(2 * frames);
        for (int i = 0; i < frames; ++i)
            out << qint16(8000 * std::sin(i * 0.3));
        return wav;
    }
    static QByteArray frame(const QByteArray& name, const QByteArray& bytes)
    {
        QByteArray size(4, '\0');
        qToBigEndian(static_cast<quint32>(bytes.size()), size.data());
        return name + size + QByteArray(2, '\0') + bytes;
    }
    static QByteArray chunk(const QByteArray& name, const QByteArray& bytes)
    {
        QByteArray size(4, '\0');
        qToLittleEndian(static_cast<quint32>(bytes.size()), size.data());
        return name + size + bytes + QByteArray(bytes.size() % 2, '\0');
    }
    static QByteArray tagList(const QHash<QByteArray, QByteArray>& tags)
    {
        QByteArray list("INFO");
        for (auto tag = tags.begin(); tag != tags.end(); ++tag)
            list += chunk(tag.key(), tag.value() + '\0');
        return tags.isEmpty() ? QByteArray() : chunk("LIST", list);
    }
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
