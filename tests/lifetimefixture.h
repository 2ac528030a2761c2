#ifndef SKINWIDGETS_TESTS_LIFETIMEFIXTURE_H
#define SKINWIDGETS_TESTS_LIFETIMEFIXTURE_H

#include "widgetfixture.h"

#include <QPointer>

// What the tests with receivers that delete share.
namespace widgettest
{

// What a receiver deletes.
enum Victim { Sender, Parent, TopLevel };

inline const char* nameOf(Victim victim)
{
    return victim == Sender ? "the sender" : victim == Parent ? "its parent" : "its window";
}

// A widget of a parent in a window, all on the heap, so that each of them can be deleted.
template <class Widget>
struct HeapScene {
    explicit HeapScene(const char* name, const QString& skin = QStringLiteral("player"))
        : window(new Window(skin)),
          parent(new QWidget(window)),
          widget(new Widget(parent, name))
    {
    }
    ~HeapScene() { delete window; }
    Q_DISABLE_COPY_MOVE(HeapScene)

    QWidget* victim(Victim which) const
    {
        return which == Sender ? widget.data() : which == Parent ? parent.data() : window.data();
    }

    QPointer<Window> window;
    QPointer<QWidget> parent;
    QPointer<Widget> widget;
};

// Deletes when it is told to, once.
class Executioner : public QObject
{
    Q_OBJECT

public:
    explicit Executioner(QWidget* victim) : m_victim(victim) {}
    int calls = 0;

public slots:
    void execute()
    {
        ++calls;
        delete m_victim;
    }

private:
    QPointer<QWidget> m_victim;
};

} // namespace widgettest

#endif
