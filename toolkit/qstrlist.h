#ifndef SKINWIDGETS_TOOLKIT_QSTRLIST_H
#define SKINWIDGETS_TOOLKIT_QSTRLIST_H

#include "toolkit/export.h"

#include <QList>

/*
 * A list of C strings with a current item, as the old interface passes it around.
 *
 * The list owns deep copies of its strings, or, when it was asked for shallow ones, keeps the pointers as they are and
 * owns nothing: the strings must then outlive the list. A null string is an item like any other, smaller than every
 * other string and equal to null only. Strings compare by bytes, upper and lower case apart.
 *
 * Positions count from 0. At most one item is the current one; operations that return a string make it the current item
 * and return null where there is none, which leaves no item current. Strings are handed out as char* for old code; what
 * a shallow list holds may be read-only.
 */
class SKINWIDGETS_EXPORT QStrList
{
public:
    // An empty list. Without deep copies the strings stay the caller's.
    explicit QStrList(bool deepCopies = true);
    // The copy holds the same kind of copies as the other list; its first item is the current one.
    QStrList(const QStrList& other);
    QStrList& operator=(const QStrList& other);
    ~QStrList();

    // Null strings count.
    uint count() const { return uint(m_strings.size()); }
    bool isEmpty() const { return m_strings.isEmpty(); }

    // The new item becomes the current one.
    void append(const char* string);
    void prepend(const char* string);
    // False, and nothing is inserted, where index is greater than count().
    bool insert(uint index, const char* string);
    // Inserts before the first item that is not smaller.
    void inSort(const char* string);

    // The item after the removed one becomes the current one, or the last one where there is none after it. False where
    // there is nothing to remove. remove() takes the current item, remove(string) the first item equal to string; where
    // none is, no item is current afterwards.
    bool remove();
    bool remove(uint index);
    bool remove(const char* string);
    bool removeFirst();
    bool removeLast();
    // Leaves no item current.
    void clear();

    // By bytes, null strings first. The first item becomes the current one.
    void sort();

    // The item at an index, the first and the last one.
    char* at(uint index);
    char* first();
    char* last();
    // The neighbours of the current item; null where no item is current.
    char* next();
    char* prev();

    // These leave the current item alone. at() is its position, -1 where there is none.
    char* current() const { return text(m_current); }
    int at() const { return m_current; }
    char* getFirst() const { return text(0); }
    char* getLast() const { return text(lastIndex()); }

    // The position of the first equal item, which becomes the current one, or -1. findNext() begins at the current
    // item, which itself counts; with none it finds nothing.
    int find(const char* string);
    int findNext(const char* string);
    // How many items are equal to string.
    uint contains(const char* string) const;

    // Equal strings in the same order; current items and the kind of copies play no part.
    bool operator==(const QStrList& other) const;
    bool operator!=(const QStrList& other) const { return !(*this == other); }

    // For range-for and the standard algorithms; any change of the list makes them invalid.
    using const_iterator = QList<const char*>::const_iterator;
    const_iterator begin() const { return m_strings.constBegin(); }
    const_iterator end() const { return m_strings.constEnd(); }

private:
    friend class QStrListIterator;

    char* text(int index) const;
    int lastIndex() const { return int(m_strings.size()) - 1; }
    char* makeCurrent(int index);
    int makeCurrentFrom(int start, const char* string);
    void release();

    QList<const char*> m_strings;
    int m_current = -1;
    bool m_deepCopies;
};

/*
 * Walks over a list without touching the list's own current item. Starts at the first item; past either end it stands
 * on no item and stays there until toFirst() or toLast(). It keeps its position when the list changes, so after a
 * removal it stands on the next item. The list must outlive it.
 */
class SKINWIDGETS_EXPORT QStrListIterator
{
public:
    // Stands on the first item. The list must outlive the iterator.
    explicit QStrListIterator(const QStrList& list);

    // Of the list as it is now.
    uint count() const { return m_list->count(); }
    bool isEmpty() const { return m_list->isEmpty(); }
    // Whether the iterator stands on the first or last item; false for an empty list.
    bool atFirst() const { return m_index == 0 && !isEmpty(); }
    bool atLast() const { return m_index == m_list->lastIndex() && !isEmpty(); }

    // Each returns the string that the iterator stands on afterwards, null where it stands on none.
    char* toFirst();
    char* toLast();
    char* operator++();
    char* operator--();
    char* operator+=(uint steps);
    char* operator-=(uint steps);

    // The string that the iterator stands on, null where there is none.
    char* current() const { return m_list->text(m_index); }
    char* operator*() const { return current(); }
    operator char*() const { return current(); }
    // The current string; moves on to the next one.
    char* operator()();

private:
    char* moveTo(qint64 index);

    const QStrList* m_list;
    int m_index;
};

#endif
