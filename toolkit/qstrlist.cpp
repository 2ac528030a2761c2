#include "toolkit/qstrlist.h"

#include <QByteArray>

#include <algorithm>
#include <utility>

QStrList::QStrList(bool deepCopies) : m_deepCopies(deepCopies) {}

QStrList::QStrList(const QStrList& other) : m_deepCopies(other.m_deepCopies)
{
    m_strings.reserve(other.m_strings.size());
    for (const char* string : other)
        append(string);
    first();
}

QStrList& QStrList::operator=(const QStrList& other)
{
    QStrList copy(other);
    m_strings.swap(copy.m_strings);
    std::swap(m_current, copy.m_current);
    std::swap(m_deepCopies, copy.m_deepCopies);
    return *this;
}

QStrList::~QStrList()
{
    release();
}

void QStrList::append(const char* string)
{
    insert(count(), string);
}

void QStrList::prepend(const char* string)
{
    insert(0, string);
}

bool QStrList::insert(uint index, const char* string)
{
    if (index > count())
        return false;
    m_strings.insert(qsizetype(index), m_deepCopies ? qstrdup(string) : string);
    makeCurrent(int(index));
    return true;
}

void QStrList::inSort(const char* string)
{
    const auto isNotSmaller = [string](const char* item) { return qstrcmp(item, string) >= 0; };
    const auto place = std::find_if(begin(), end(), isNotSmaller);
    insert(uint(place - begin()), string);
}

bool QStrList::remove()
{
    return m_current >= 0 && remove(uint(m_current));
}

bool QStrList::remove(uint index)
{
    if (index >= count())
        return false;
    const char* string = m_strings.takeAt(qsizetype(index));
    if (m_deepCopies)
        delete[] string;
    makeCurrent(std::min(int(index), lastIndex()));
    return true;
}

bool QStrList::remove(const char* string)
{
    return find(string) >= 0 && remove();
}

bool QStrList::removeFirst()
{
    return remove(0u);
}

bool QStrList::removeLast()
{
    return !isEmpty() && remove(count() - 1);
}

void QStrList::clear()
{
    release();
    m_strings.clear();
    m_current = -1;
}

void QStrList::sort()
{
    const auto isSmaller = [](const char* a, const char* b) { return qstrcmp(a, b) < 0; };
    std::stable_sort(m_strings.begin(), m_strings.end(), isSmaller);
    first();
}

char* QStrList::at(uint index)
{
    return makeCurrent(index < count() ? int(index) : -1);
}

char* QStrList::first()
{
    return makeCurrent(0);
}

char* QStrList::last()
{
    return makeCurrent(lastIndex());
}

char* QStrList::next()
{
    return makeCurrent(m_current < 0 ? -1 : m_current + 1);
}

char* QStrList::prev()
{
    return makeCurrent(m_current - 1);
}

int QStrList::find(const char* string)
{
    return makeCurrentFrom(0, string);
}

int QStrList::findNext(const char* string)
{
    return makeCurrentFrom(m_current < 0 ? int(count()) : m_current, string);
}

uint QStrList::contains(const char* string) const
{
    const auto isEqual = [string](const char* item) { return qstrcmp(item, string) == 0; };
    return uint(std::count_if(begin(), end(), isEqual));
}

bool QStrList::operator==(const QStrList& other) const
{
    const auto isEqual = [](const char* a, const char* b) { return qstrcmp(a, b) == 0; };
    return std::equal(begin(), end(), other.begin(), other.end(), isEqual);
}

char* QStrList::text(int index) const
{
    if (index < 0 || index > lastIndex())
        return nullptr;
    return const_cast<char*>(m_strings.at(index));
}

char* QStrList::makeCurrent(int index)
{
    m_current = index >= 0 && index <= lastIndex() ? index : -1;
    return current();
}

int QStrList::makeCurrentFrom(int start, const char* string)
{
    const auto isEqual = [string](const char* item) { return qstrcmp(item, string) == 0; };
    const auto found = std::find_if(begin() + start, end(), isEqual);
    makeCurrent(int(found - begin()));
    return m_current;
}

void QStrList::release()
{
    if (!m_deepCopies)
        return;
    for (const char* string : *this)
        delete[] string;
}

QStrListIterator::QStrListIterator(const QStrList& list) : m_list(&list), m_index(list.isEmpty() ? -1 : 0) {}

char* QStrListIterator::toFirst()
{
    return moveTo(0);
}

char* QStrListIterator::toLast()
{
    return moveTo(m_list->lastIndex());
}

char* QStrListIterator::operator++()
{
    return *this += 1;
}

char* QStrListIterator::operator--()
{
    return *this -= 1;
}

char* QStrListIterator::operator+=(uint steps)
{
    return moveTo(m_index < 0 ? -1 : qint64(m_index) + steps);
}

char* QStrListIterator::operator-=(uint steps)
{
    return moveTo(qint64(m_index) - steps);
}

char* QStrListIterator::operator()()
{
    char* string = current();
    ++*this;
    return string;
}

char* QStrListIterator::moveTo(qint64 index)
{
    m_index = index >= 0 && index <= m_list->lastIndex() ? int(index) : -1;
    return current();
}
