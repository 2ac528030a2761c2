#include "player/details/tracktext.h"

#include <QFile>
#include <QFileInfo>
#include <QStringConverter>

#include <algorithm>
#include <iterator>
#include <vector>

namespace
{

// One control character in so many is accepted, as old texts have page breaks and the like.
constexpr qsizetype charactersForControl = 16;
constexpr qsizetype tabWidth = 4;
constexpr const char* headings[] = {"ti",   "ar", "al",     "au", "lr", "by",     "re",
                                    "tool", "ve", "length", "la", "id", "offset", "#"};
// A line may be sung at any number of times; a text that grows beyond this is cut there.
constexpr qsizetype largestText = 2 * TrackText::largestFile;

bool isLineEnd(QChar c)
{
    return c == QLatin1Char('\n') || c == QLatin1Char('\f') || c == QLatin1Char('\v') || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

bool isText(const QString& text)
{
    qsizetype controls = 0;
    for (const QChar c : text) {
        if (c.isNull())
            return false;
        if (c.category() == QChar::Other_Control && !c.isSpace())
            ++controls;
    }
    return controls <= text.size() / charactersForControl;
}

// Takes up to `most` digits off the beginning; nothing where there is none, or one more.
std::optional<QStringView> takeDigits(QStringView& text, qsizetype most)
{
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    const qsizetype count = std::find_if_not(text.begin(), text.end(), isDigit) - text.begin();
    if (count == 0 || count > most)
        return std::nullopt;
    const QStringView digits = text.left(count);
    text = text.mid(count);
    return digits;
}

bool take(QStringView& text, char c)
{
    if (!text.startsWith(QLatin1Char(c)))
        return false;
    text = text.mid(1);
    return true;
}

// Takes [mm:ss], [mm:ss.xx] or [mm:ss:xx] off the beginning and gives its milliseconds, or leaves the text alone.
std::optional<qint64> takeStamp(QStringView& text, char open, char close)
{
    QStringView rest = text;
    if (!take(rest, open))
        return std::nullopt;
    const auto minutes = takeDigits(rest, 4);
    if (!minutes || !take(rest, ':'))
        return std::nullopt;
    const auto seconds = takeDigits(rest, 2);
    if (!seconds)
        return std::nullopt;
    qint64 time = (minutes->toLongLong() * 60 + seconds->toLongLong()) * 1000;
    if (take(rest, '.') || take(rest, ':')) {
        const auto fraction = takeDigits(rest, 3);
        if (!fraction)
            return std::nullopt;
        // ".5" are five tenths, ".05" five hundredths.
        time += fraction->toString().leftJustified(3, QLatin1Char('0')).toInt();
    }
    if (!take(rest, close))
        return std::nullopt;
    text = rest;
    return time;
}

QString withoutWordStamps(QStringView text)
{
    QString result;
    result.reserve(text.size());
    while (!text.isEmpty()) {
        if (takeStamp(text, '<', '>'))
            continue;
        result += text.front();
        text = text.mid(1);
    }
    return result;
}

struct Heading {
    QStringView name;
    QStringView value;
};

// What [name:value] alone on its line says.
std::optional<Heading> headingIn(QStringView line)
{
    line = line.trimmed();
    const qsizetype colon = line.indexOf(QLatin1Char(':'));
    if (colon < 2 || !line.startsWith(QLatin1Char('[')) || !line.endsWith(QLatin1Char(']')))
        return std::nullopt;
    const QStringView name = line.mid(1, colon - 1);
    // Others are part of the song, such as [Chorus: all].
    const auto isName = [name](const char* known) {
        return name.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    };
    if (std::none_of(std::begin(headings), std::end(headings), isName))
        return std::nullopt;
    return Heading{name, line.mid(colon + 1).chopped(1).trimmed()};
}

struct TimedLine {
    qint64 time;
    QStringView line;
};

/* Collects the lines of a text with their times. */
class StampReader
{
public:
    void read(QStringView line)
    {
        QStringView words = line.trimmed();
        std::vector<qint64> stamps;
        while (const auto stamp = takeStamp(words, '[', ']')) {
            stamps.push_back(*stamp);
            words = words.trimmed();
        }
        if (stamps.empty()) {
            readUnstamped(words);
            return;
        }
        m_isTimed = true;
        m_lastTime = stamps.back();
        for (const qint64 time : stamps)
            add(time, words);
    }

    bool isTimed() const { return m_isTimed; }

    // Gives text and times in the order of the times.
    void finish(TrackText& result)
    {
        std::stable_sort(m_lines.begin(), m_lines.end(),
                         [](const TimedLine& a, const TimedLine& b) { return a.time < b.time; });
        QString text;
        text.reserve(m_size);
        result.times.clear();
        for (const TimedLine& line : m_lines) {
            text += line.line;
            text += QLatin1Char('\n');
            result.times += std::max<qint64>(line.time - m_offset, 0);
        }
        text.chop(1);
        result.text = text;
    }

private:
    void readUnstamped(QStringView line)
    {
        const auto heading = headingIn(line);
        if (!heading)
            add(m_lastTime, line);
        else if (heading->name.compare(QLatin1String("offset"), Qt::CaseInsensitive) == 0)
            m_offset = heading->value.toInt();
    }

    void add(qint64 time, QStringView line)
    {
        if (m_size + line.size() >= largestText)
            return;
        m_size += line.size() + 1;
        m_lines.push_back({time, line});
    }

    std::vector<TimedLine> m_lines;
    // Of the stamped line before.
    qint64 m_lastTime = 0;
    qint64 m_offset = 0;
    qsizetype m_size = 0;
    bool m_isTimed = false;
};

// Blank lines at the ends go, with their times.
void trim(TrackText& text)
{
    const auto isInk = [](QChar c) { return !c.isSpace(); };
    const auto first = std::find_if(text.text.cbegin(), text.text.cend(), isInk);
    if (first == text.text.cend()) {
        text.text.clear();
        text.times.clear();
        return;
    }
    const qsizetype ink = first - text.text.cbegin();
    const qsizetype start = ink == 0 ? 0 : text.text.lastIndexOf(QLatin1Char('\n'), ink - 1) + 1;
    const auto last = std::find_if(text.text.crbegin(), text.text.crend(), isInk);
    const qsizetype end = text.text.crend() - last;
    if (!text.times.isEmpty()) {
        const qsizetype skipped = QStringView(text.text).left(start).count(QLatin1Char('\n'));
        const qsizetype kept = QStringView(text.text).mid(start, end - start).count(QLatin1Char('\n')) + 1;
        text.times = text.times.mid(skipped, kept);
    }
    text.text = text.text.mid(start, end - start);
}

bool isTimedKind(const QFileInfo& file)
{
    return file.suffix().compare(QLatin1String("lrc"), Qt::CaseInsensitive) == 0;
}

} // namespace

int TrackText::lineAt(qint64 position) const
{
    return static_cast<int>(std::upper_bound(times.begin(), times.end(), position) - times.begin()) - 1;
}

TrackText TrackText::beside(const QString& soundFile)
{
    const QFileInfo sound(soundFile);
    const QString base = sound.path() + QLatin1Char('/') + sound.completeBaseName();
    for (const char* ending : {".lrc", ".LRC", ".txt", ".TXT"}) {
        const QString file = base + QLatin1String(ending);
        // Nothing but files: to read from a pipe could take for ever.
        if (file != soundFile && QFileInfo(file).isFile())
            return read(file);
    }
    return {};
}

TrackText TrackText::read(const QString& file)
{
    TrackText result;
    const QFileInfo info(file);
    result.fileName = info.fileName();
    result.state = Unreadable;
    QFile source(file);
    if (!info.isFile() || !source.open(QIODevice::ReadOnly))
        return result;
    const QByteArray bytes = source.read(largestFile);
    const bool isWhole = source.atEnd();
    if (source.error() != QFileDevice::NoError)
        return result;

    result.state = NoText;
    std::optional<QString> text = tracktext::decoded(bytes, isWhole);
    if (!text)
        return result;
    if (const qsizetype lastLine = text->lastIndexOf(QLatin1Char('\n')); !isWhole && lastLine >= 0)
        text->truncate(lastLine);
    result.text = tracktext::cleaned(*text);
    if (isTimedKind(info))
        tracktext::readStamps(result);
    trim(result);
    result.state = !result.hasText() ? Empty : isWhole ? Complete : Shortened;
    return result;
}

std::optional<QString> tracktext::decoded(const QByteArray& bytes, bool isWhole)
{
    const auto encoding = QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8);
    // A decoder that keeps a state takes half a character at the end for one whose rest is still to come.
    QStringDecoder decoder(encoding, isWhole ? QStringConverter::Flag::Stateless : QStringConverter::Flag::Default);
    QString text = decoder(bytes);
    if (decoder.hasError())
        text = QString::fromLatin1(bytes);
    return isText(text) ? std::optional(text) : std::nullopt;
}

QString tracktext::cleaned(const QString& text)
{
    QString result;
    result.reserve(text.size());
    QChar before;
    for (const QChar c : text) {
        const bool endsLine = isLineEnd(c) || c == QLatin1Char('\r');
        if (endsLine && !(c == QLatin1Char('\n') && before == QLatin1Char('\r')))
            result += QLatin1Char('\n');
        else if (c == QLatin1Char('\t'))
            result += QString(tabWidth, QLatin1Char(' '));
        else if (!endsLine && c.category() != QChar::Other_Control && c != QChar::ByteOrderMark)
            result += c;
        before = c;
    }
    return result;
}

void tracktext::readStamps(TrackText& text)
{
    // The reader's lines are parts of this.
    const QString source = withoutWordStamps(text.text);
    StampReader reader;
    for (const QStringView line : QStringView(source).split(QLatin1Char('\n')))
        reader.read(line);
    reader.finish(text);
    if (!reader.isTimed())
        text.times.clear();
}
