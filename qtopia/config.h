#ifndef SKINWIDGETS_QTOPIA_CONFIG_H
#define SKINWIDGETS_QTOPIA_CONFIG_H

#include "toolkit/export.h"

#include <QHash>
#include <QString>
#include <QStringList>

/*
 * Reads a configuration file of groups and keys. It never writes one.
 *
 *     # a comment
 *     [group]
 *     key = value
 *
 * One group heading or entry a line, lines ending in LF or CR LF, in UTF-8. Blanks around group names, keys and values
 * do not count. A line whose first character other than blanks is # is a comment; a # further on is part of the value.
 * The value is all that follows the first equals sign, taken as it is: nothing is unescaped or split. Groups and keys
 * are case sensitive. Entries of groups with the same name add up, and of equal keys the last one counts. Entries above
 * the first heading belong to the group with the empty name. A heading without its closing bracket reaches to the end
 * of the line; what follows the bracket is ignored, and so is a line that is none of all this, or has no key.
 *
 * The file is read once, by the constructor. A file that is missing, unreadable or no regular file counts as empty.
 * Bytes that are no UTF-8 become replacement characters. Of a file larger than largestFile the bytes beyond are ignored
 * together with the line that they cut.
 */
class SKINWIDGETS_EXPORT Config
{
public:
    // Where a name leads: File takes it as a path, User as $HOME/Settings/NAME.conf.
    enum Domain { File, User };

    // Bytes.
    static constexpr qint64 largestFile = qint64(1024) * 1024;

    // Reads the file, once. Never fails: isValid() tells whether there was one.
    explicit Config(const QString& name, Domain domain = User);

    // Whether there was a regular file to read, be it empty.
    bool isValid() const { return m_valid; }

    // Whether the file has a heading of that name, or an entry that belongs to it.
    bool hasGroup(const QString& group) const { return m_groups.contains(group); }
    // The group that all reading below refers to; at first the one with the empty name. A group that the file does not
    // have is empty.
    void setGroup(const QString& group) { m_group = group; }
    // Whether the current group has the key, be its value empty.
    bool hasKey(const QString& key) const;

    // The value, or fallback where the key is missing. The value of a present key is never null, but it may be empty.
    QString readEntry(const QString& key, const QString& fallback = QString()) const;
    // A decimal number with an optional sign. Only a missing key gives fallback: a value that is no such number, or not
    // one of an int, is 0.
    int readNumEntry(const QString& key, int fallback = -1) const;
    // True for "true" in any case and for every number of an int but 0, false for any other value.
    bool readBoolEntry(const QString& key, bool fallback = false) const;
    // The parts of the value between separators, as they stand there, without the empty ones. None for a missing key.
    QStringList readListEntry(const QString& key, QChar separator) const;

private:
    using Group = QHash<QString, QString>;

    void read(const QString& path);
    void parse(const QByteArray& bytes);
    Group* parseLine(QStringView line, Group* group);

    QHash<QString, Group> m_groups;
    QString m_group;
    bool m_valid = false;
};

#endif
