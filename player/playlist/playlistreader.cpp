#include "player/playlist/playlistreader.h"

#include "player/playlist/m3u.h"
#include "player/playlist/soundtypes.h"

#include <QCollator>
#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QPointer>

#include <chrono>
#include <queue>
#include <utility>

using namespace std::chrono_literals;

namespace
{

// What the user does not notice between two events.
constexpr auto portion = 8ms;

QCollator naturalOrder()
{
    // The C locale sorts by code points whatever it is asked for.
    const QLocale locale = QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale();
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace

/* Something that is read bit by bit and tells the reader what it comes across. */
class PlaylistReader::Source
{
public:
    Source(PlaylistReader* owner, const QString& path) : reader(owner), place(path) {}
    virtual ~Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    // One small step; false at the end. It may put another source on top of this one.
    virtual bool step() = 0;

    PlaylistReader* const reader;
    const QString place;
};

/* The paths that were given. */
class PlaylistReader::Paths : public Source
{
public:
    explicit Paths(PlaylistReader* owner) : Source(owner, QString()) {}

    bool step() override
    {
        if (reader->m_waiting.isEmpty())
            return false;
        const QString path = QFileInfo(reader->m_waiting.takeFirst()).absoluteFilePath();
        reader->m_visited.clear();
        reader->takeAnything(path, {path, QString(), -1, !QFileInfo::exists(path)});
        return true;
    }
};

/* A folder: first its names are put in order, then they are taken. */
class PlaylistReader::Folder : public Source
{
public:
    Folder(PlaylistReader* owner, const QString& path)
        : Source(owner, path),
          m_names(std::make_unique<QDirIterator>(path, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot)),
          m_order(naturalOrder())
    {
    }

    bool step() override
    {
        if (m_names) {
            collect();
            return true;
        }
        if (m_sorted.empty())
            return false;
        const Name first = m_sorted.top();
        m_sorted.pop();
        if (first.isFolder)
            reader->enterFolder(first.path);
        else
            reader->take({first.path, QString(), -1, false});
        return true;
    }

private:
    struct Name {
        bool isFolder;
        QCollatorSortKey key;
        QString path;
    };
    struct ComesLater {
        bool operator()(const Name& a, const Name& b) const
        {
            if (a.isFolder != b.isFolder)
                return a.isFolder;
            const int order = a.key.compare(b.key);
            return order != 0 ? order > 0 : a.path > b.path;
        }
    };

    void collect()
    {
        if (!m_names->hasNext()) {
            m_names.reset();
            return;
        }
        const QFileInfo info = m_names->nextFileInfo();
        if (info.isDir() || soundtypes::isSound(info.fileName()))
            m_sorted.push({info.isDir(), m_order.sortKey(info.fileName()), info.filePath()});
    }

    // Null once all have been collected.
    std::unique_ptr<QDirIterator> m_names;
    QCollator m_order;
    // A heap, so that no step has to sort them all.
    std::priority_queue<Name, std::vector<Name>, ComesLater> m_sorted;
};

/* A playlist file. */
class PlaylistReader::M3uFile : public Source
{
public:
    enum Contents { FilesOnly, Anything };

    M3uFile(PlaylistReader* owner, const QString& path, Contents contents)
        : Source(owner, path),
          m_reader(path),
          m_contents(contents)
    {
    }

    bool step() override
    {
        PlaylistEntry entry;
        const m3u::Reader::Line line = m_reader.readLine(entry);
        if (line == m3u::Reader::End)
            tellFailure();
        if (line != m3u::Reader::Entry)
            return line != m3u::Reader::End;
        if (m_contents == Anything)
            reader->takeAnything(entry.file, entry);
        else
            reader->take(entry);
        return true;
    }

private:
    void tellFailure()
    {
        if (!m_reader.error().isEmpty())
            reader->m_failures.append({place, m_reader.error()});
        else if (m_reader.damagedCount() > 0)
            reader->m_failures.append({place, tr("damaged, lines left out: %1").arg(m_reader.damagedCount())});
    }

    m3u::Reader m_reader;
    Contents m_contents;
};

PlaylistReader::PlaylistReader(QObject* parent) : QObject(parent)
{
    m_timer.setObjectName(QStringLiteral("read playlist"));
    connect(&m_timer, &QTimer::timeout, this, &PlaylistReader::work);
}

PlaylistReader::~PlaylistReader() = default;

void PlaylistReader::read(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    m_waiting += paths;
    if (m_sources.empty() || !m_sources.front()->place.isEmpty())
        begin(std::make_unique<Paths>(this));
}

void PlaylistReader::readPlain(const QString& playlist)
{
    begin(std::make_unique<M3uFile>(this, playlist, M3uFile::FilesOnly));
}

// Below everything else, so that it is read after that.
void PlaylistReader::begin(std::unique_ptr<Source> source)
{
    if (!isReading())
        m_foundCount = 0;
    m_sources.insert(m_sources.begin(), std::move(source));
    m_timer.start(0);
}

void PlaylistReader::cancel()
{
    m_timer.stop();
    m_sources.clear();
    m_waiting.clear();
    m_batch.clear();
    m_failures.clear();
}

QString PlaylistReader::place() const
{
    return m_sources.empty() ? QString() : m_sources.back()->place;
}

void PlaylistReader::work()
{
    const QDeadlineTimer deadline(portion);
    while (!m_sources.empty() && !deadline.hasExpired()) {
        Source* source = m_sources.back().get();
        // A source that has come to its end has put none on top of itself.
        if (!source->step())
            m_sources.pop_back();
        if (m_foundCount >= maxEntries) {
            m_failures.append({place(), tr("too many files")});
            m_sources.clear();
            m_waiting.clear();
        }
    }
    if (m_sources.empty())
        m_timer.stop();

    // A receiver may cancel, begin something else or delete this.
    const QPointer<PlaylistReader> self(this);
    if (!m_batch.isEmpty())
        emit found(std::exchange(m_batch, {}));
    if (self)
        reportFailures();
    if (self)
        emit progressed();
    if (self && m_sources.empty() && !isReading())
        emit finished();
}

void PlaylistReader::reportFailures()
{
    const QPointer<PlaylistReader> self(this);
    const auto failures = std::exchange(m_failures, {});
    for (const auto& [path, reason] : failures) {
        if (!self)
            return;
        emit failed(path, reason);
    }
}

void PlaylistReader::take(const PlaylistEntry& entry)
{
    m_batch.append(entry);
    ++m_foundCount;
}

void PlaylistReader::takeAnything(const QString& path, const PlaylistEntry& entry)
{
    if (soundtypes::isPlaylist(path) && !entry.isMissing && QFileInfo(path).isFile())
        enterPlaylist(path);
    else if (!entry.isMissing && QFileInfo(path).isDir())
        enterFolder(path);
    else
        take(entry);
}

void PlaylistReader::enterFolder(const QString& path)
{
    if (!isNew(path))
        return;
    // As another user's folder, or one that went away meanwhile.
    if (!QFileInfo(path).isReadable() || !QFileInfo(path).isExecutable()) {
        m_failures.append({path, tr("cannot be read")});
        return;
    }
    m_sources.push_back(std::make_unique<Folder>(this, path));
}

void PlaylistReader::enterPlaylist(const QString& path)
{
    if (isNew(path))
        m_sources.push_back(std::make_unique<M3uFile>(this, path, M3uFile::Anything));
}

bool PlaylistReader::isNew(const QString& path)
{
    if (static_cast<int>(m_sources.size()) > maxDepth) {
        m_failures.append({path, tr("too deep")});
        return false;
    }
    const QString real = QFileInfo(path).canonicalFilePath();
    // One that went away meanwhile has no real path.
    const QString known = real.isEmpty() ? path : real;
    if (m_visited.contains(known))
        return false;
    m_visited.insert(known);
    return true;
}
