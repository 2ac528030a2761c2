#ifndef SKINWIDGETS_TESTS_LIFETIME_SCENE_H
#define SKINWIDGETS_TESTS_LIFETIME_SCENE_H

#include "lifetime/kinds.h"

#include <QMetaMethod>
#include <QPointer>
#include <QStringList>

#include <memory>

namespace lifetimetest
{

// The classes with a meta-object that the public headers declare.
const QStringList& declaredClasses();

// The signals of an object that its classes of the library declare, with those of QAbstractButton
// that survive it.
QList<QMetaMethod> signalsOf(const QObject* object);

// Calls a function at a signal of any kind.
class Listener : public QObject
{
    Q_OBJECT

public:
    Listener(const QObject* sender, const QMetaMethod& signal, std::function<void()> act);

public slots:
    void hear() { m_act(); }

private:
    std::function<void()> m_act;
};

// One signal of one sender in a scene.
struct Emission {
    int sender;
    int signal;

    friend bool operator==(const Emission& a, const Emission& b)
    {
        return a.sender == b.sender && a.signal == b.signal;
    }
    friend bool operator<(const Emission& a, const Emission& b)
    {
        return a.sender != b.sender ? a.sender < b.sender : a.signal < b.signal;
    }
};

// A widget in a parent in a shown window, all on the heap and free to be deleted.
class Scene
{
public:
    explicit Scene(const Kind& kind);
    ~Scene() { delete window; }
    Q_DISABLE_COPY_MOVE(Scene)

    // The widget and those of its parts that are of classes of the library, in an order that is always the same.
    QList<QPointer<QWidget>> senders() const;
    // From now on every emission is told.
    void listen(const std::function<void(const Emission&)>& told);

    QPointer<QWidget> window = new QWidget;
    QPointer<QWidget> parent = new QWidget(window);
    QPointer<QWidget> widget;

private:
    std::vector<std::unique_ptr<Listener>> m_listeners;
};

} // namespace lifetimetest

#endif
