#include "lifetime/storm.h"

#include "controls/imagebutton.h"
#include "listbox/listbox_skin.h"
#include "media/sliderskin.h"
#include "scroll/scrollbarskin.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

namespace lifetimetest
{

namespace
{

QByteArray text(const QPoint& point)
{
    return QByteArray::number(point.x()) + ',' + QByteArray::number(point.y());
}

// Whether Qt's own scroll bar takes what happens there. It goes on working on a bar that a receiver deleted, so that no
// view that has one survives that.
bool isInQtsBar(QWidget* part)
{
    return qobject_cast<QScrollBar*>(part);
}

// The part of a scene's widget at a point in it; null once the widget is gone.
QWidget* partAt(const Scene& scene, const QPoint& at)
{
    if (!scene.widget)
        return nullptr;
    QWidget* const part = scene.widget->childAt(at);
    return part ? part : scene.widget.data();
}

// A stylus whose events go to the widgets themselves, as they do after a press: to the one that was pressed.
class Stylus
{
public:
    explicit Stylus(Scene& scene) : m_scene(scene) {}

    void press(const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        begin(QEvent::MouseButtonPress, at, button);
    }
    void pressTwice(const QPoint& at) { begin(QEvent::MouseButtonDblClick, at, Qt::LeftButton); }
    void move(const QPoint& at, Qt::MouseButtons held = Qt::LeftButton)
    {
        if (!m_target)
            m_target = partAt(m_scene, at);
        send(QEvent::MouseMove, at, Qt::NoButton, held);
    }
    void release(const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonRelease, at, button, Qt::NoButton);
    }
    void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        press(at, button);
        release(at, button);
    }

private:
    void begin(QEvent::Type type, const QPoint& at, Qt::MouseButton button)
    {
        m_target = partAt(m_scene, at);
        send(type, at, button, button);
    }
    void send(QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons held)
    {
        if (!m_target || !m_scene.widget || isInQtsBar(m_target))
            return;
        const QPoint local = m_target->mapFrom(m_scene.widget, at);
        QMouseEvent event(type, local, m_scene.widget->mapToGlobal(at), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(m_target, &event);
    }

    Scene& m_scene;
    QPointer<QWidget> m_target;
};

// The same with everything that the toolkit does around it. A stylus that was pressed gets lifted in any case, so that
// the next one begins anew.
class WindowStylus
{
public:
    explicit WindowStylus(Scene& scene)
        : m_scene(scene),
          m_window(scene.window->windowHandle()),
          m_origin(scene.widget->mapTo(scene.window, QPoint()))
    {
    }
    ~WindowStylus()
    {
        if (!m_down)
            return;
        QWindow elsewhere;
        elsewhere.create();
        QTest::mouseRelease(&elsewhere, Qt::LeftButton);
    }
    Q_DISABLE_COPY_MOVE(WindowStylus)

    void press(const QPoint& at)
    {
        if (!m_window || isInQtsBar(partAt(m_scene, at)))
            return;
        m_down = true;
        QTest::mousePress(m_window, Qt::LeftButton, {}, m_origin + at);
    }
    void move(const QPoint& at)
    {
        if (m_window && m_down)
            QTest::mouseMove(m_window, m_origin + at);
    }
    void release(const QPoint& at)
    {
        if (!m_window || !m_down)
            return;
        m_down = false;
        QTest::mouseRelease(m_window, Qt::LeftButton, {}, m_origin + at);
    }

private:
    Scene& m_scene;
    QPointer<QWindow> m_window;
    QPoint m_origin;
    bool m_down = false;
};

void fireTimers(Scene& scene)
{
    if (!scene.widget)
        return;
    QList<QPointer<QTimer>> timers;
    for (QTimer* timer : scene.widget->findChildren<QTimer*>())
        timers << timer;
    for (const QPointer<QTimer>& timer : timers) {
        if (!timer || !timer->isActive())
            continue;
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
}

void typeKey(QWidget* widget, int key, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWidget> target = widget;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (!target)
            return;
        QKeyEvent event(type, key, modifiers, key < 0x80 ? QString(QChar(key)) : QString());
        QCoreApplication::sendEvent(target, &event);
    }
}

QList<QPointer<QWidget>> parts(const Scene& scene)
{
    if (!scene.widget)
        return {};
    QList<QPointer<QWidget>> result{scene.widget};
    for (QWidget* part : scene.widget->findChildren<QWidget*>())
        if (!isInQtsBar(part))
            result << part;
    return result;
}

// Points all over a widget, some on its edges.
QList<QPoint> places(const QSize& size)
{
    QList<QPoint> result;
    for (const int x :
         {1, size.width() / 12, size.width() / 3, size.width() / 2, size.width() * 2 / 3, size.width() - 2})
        for (const int y : {1, size.height() / 4, size.height() / 2, size.height() * 3 / 4, size.height() - 2})
            if (!result.contains(QPoint(x, y)))
                result << QPoint(x, y);
    return result;
}

using Storm = std::vector<Stimulus>;

void addStylus(Storm& storm, const QSize& size)
{
    const QPoint far(size.width() + 40, size.height() + 40);
    for (const QPoint& at : places(size)) {
        const auto add = [&](const QByteArray& sort, const std::function<void(Scene&)>& act) {
            storm.push_back({sort, sort + " at " + text(at), act});
        };
        add("tap", [at](Scene& scene) { Stylus(scene).click(at); });
        add("tap in the window", [at](Scene& scene) {
            WindowStylus stylus(scene);
            stylus.press(at);
            stylus.release(at);
        });
        add("drag", [at](Scene& scene) {
            Stylus stylus(scene);
            stylus.press(at);
            stylus.move(at + QPoint(20, 20));
            stylus.move(at - QPoint(15, 15));
            stylus.release(at - QPoint(15, 15));
        });
        add("drag in the window", [at](Scene& scene) {
            WindowStylus stylus(scene);
            stylus.press(at);
            stylus.move(at + QPoint(20, 20));
            stylus.release(at + QPoint(20, 20));
        });
        add("drag outside", [at, far](Scene& scene) {
            Stylus stylus(scene);
            stylus.press(at);
            stylus.move(far);
            fireTimers(scene);
            stylus.move(-far);
            fireTimers(scene);
            stylus.release(-far);
        });
        add("long press", [at](Scene& scene) {
            Stylus stylus(scene);
            stylus.press(at);
            fireTimers(scene);
            fireTimers(scene);
            stylus.release(at);
        });
        add("press and loss of the focus", [at](Scene& scene) {
            Stylus(scene).press(at);
            for (const QPointer<QWidget>& part : parts(scene)) {
                QFocusEvent event(QEvent::FocusOut);
                if (part)
                    QCoreApplication::sendEvent(part, &event);
                if (!scene.widget)
                    return;
            }
        });
        add("double tap", [at](Scene& scene) {
            Stylus stylus(scene);
            stylus.click(at);
            stylus.pressTwice(at);
            stylus.release(at);
        });
        add("right button", [at](Scene& scene) { Stylus(scene).click(at, Qt::RightButton); });
        add("pointer passes", [at](Scene& scene) {
            Stylus(scene).move(at, Qt::NoButton);
            Stylus(scene).move(QPoint(at.x(), 400), Qt::NoButton);
        });
        add("wheel", [at](Scene& scene) {
            for (const int delta : {-120, 120}) {
                QWidget* const part = partAt(scene, at);
                if (!part || isInQtsBar(part))
                    return;
                QWheelEvent event(at, scene.widget->mapToGlobal(at), {}, QPoint(0, delta), Qt::NoButton, {},
                                  Qt::NoScrollPhase, false);
                QCoreApplication::sendEvent(part, &event);
            }
        });
    }
}

void addKeys(Storm& storm, const Scene& sample)
{
    const std::pair<int, Qt::KeyboardModifiers> keys[] = {
        {Qt::Key_Left, {}},
        {Qt::Key_Right, {}},
        {Qt::Key_Up, {}},
        {Qt::Key_Down, {}},
        {Qt::Key_PageUp, {}},
        {Qt::Key_PageDown, {}},
        {Qt::Key_Home, {}},
        {Qt::Key_End, {}},
        {Qt::Key_Return, {}},
        {Qt::Key_Enter, {}},
        {Qt::Key_Space, {}},
        {Qt::Key_Escape, {}},
        {Qt::Key_Tab, {}},
        {Qt::Key_Backtab, {}},
        {Qt::Key_1, {}},
        {0x2104, {}},
        {Qt::Key_Down, Qt::ShiftModifier},
        {Qt::Key_End, Qt::ShiftModifier},
        {Qt::Key_A, Qt::ControlModifier},
    };
    const int count = int(parts(sample).size());
    for (const auto& [key, modifiers] : keys)
        for (int i = 0; i < count; ++i) {
            // The second time there is something to go on from.
            const auto act = [key = key, modifiers = modifiers, i](Scene& scene) {
                typeKey(parts(scene).at(i), key, modifiers);
                if (scene.widget && parts(scene).size() > i)
                    typeKey(parts(scene).at(i), key, modifiers);
            };
            const QByteArray name = "key " + QByteArray::number(key, 16) + '+' + QByteArray::number(int(modifiers), 16);
            storm.push_back({name, name + " in part " + QByteArray::number(i), act});
        }
}

void addStates(Storm& storm)
{
    const auto add = [&](const QByteArray& name, std::function<void(QWidget*)> act) {
        storm.push_back({name, name, [act = std::move(act)](Scene& scene) {
                             act(scene.widget);
                             QCoreApplication::processEvents();
                             fireTimers(scene);
                         }});
    };
    add("small size", [](QWidget* w) { w->resize(20, 30); });
    add("large size", [](QWidget* w) { w->resize(250, 250); });
    add("no size", [](QWidget* w) { w->resize(0, 0); });
    add("disabled", [](QWidget* w) { w->setEnabled(false); });
    add("hidden", [](QWidget* w) { w->hide(); });
    add("larger font", [](QWidget* w) { w->setFont(QFont(w->font().family(), 30)); });
    add("right to left", [](QWidget* w) { w->setLayoutDirection(Qt::RightToLeft); });
    for (const QEvent::Type type : {QEvent::FocusIn, QEvent::FocusOut, QEvent::StyleChange, QEvent::EnabledChange}) {
        add("event " + QByteArray::number(type), [type](QWidget* w) {
            QFocusEvent focus(type == QEvent::FocusOut ? QEvent::FocusOut : QEvent::FocusIn);
            QEvent other(type);
            const bool isFocus = type == QEvent::FocusIn || type == QEvent::FocusOut;
            QCoreApplication::sendEvent(w, isFocus ? static_cast<QEvent*>(&focus) : &other);
        });
    }
}

// Plain values for the parameters of slots.
QList<QVariant> valuesOf(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Int:
        return {0, 7, -5, 1000};
    case QMetaType::UInt:
        return {0U, 7U, 1000U};
    case QMetaType::Bool:
        return {false, true};
    case QMetaType::Float:
        return {0.5F};
    case QMetaType::QString:
        return {QString(), QStringLiteral("mute_off"), QStringLiteral("mute_on")};
    default:
        return {};
    }
}

void callSlot(QObject* object, const QMetaMethod& slot, QList<QVariant> values)
{
    QGenericArgument arguments[4];
    for (int i = 0; i < values.size(); ++i)
        arguments[i] = QGenericArgument(slot.parameterMetaType(i).name(), values[i].data());
    slot.invoke(object, Qt::DirectConnection, arguments[0], arguments[1], arguments[2], arguments[3]);
}

void addSlots(Storm& storm, const Scene& sample)
{
    const QMetaObject* const type = sample.widget->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < type->methodCount(); ++i) {
        const QMetaMethod slot = type->method(i);
        if (slot.methodType() != QMetaMethod::Slot || slot.access() != QMetaMethod::Public || slot.parameterCount() > 4)
            continue;
        // Qt's own: it goes on without looking whether the button is still there.
        if (slot.name() == "animateClick")
            continue;
        for (int choice = 0; choice < 4; ++choice) {
            QList<QVariant> values;
            for (int p = 0; p < slot.parameterCount(); ++p) {
                const QList<QVariant> possible = valuesOf(slot.parameterMetaType(p));
                if (choice < possible.size())
                    values << possible[choice];
            }
            if (values.size() != slot.parameterCount() || (values.isEmpty() && choice > 0))
                continue;
            storm.push_back({slot.methodSignature(), slot.methodSignature() + " #" + QByteArray::number(choice),
                             [slot, values](Scene& scene) { callSlot(scene.widget, slot, values); }});
        }
    }
}

// Adds what is done to widgets of a type; act gets the widget as that type.
template <class Type>
void addOperation(Storm& storm, const Scene& sample, const QByteArray& name, std::function<void(Type*)> act)
{
    if (!dynamic_cast<Type*>(sample.widget.data()))
        return;
    storm.push_back({name, name, [act = std::move(act)](Scene& scene) {
                         act(dynamic_cast<Type*>(scene.widget.data()));
                         QCoreApplication::processEvents();
                         fireTimers(scene);
                     }});
}

void addPanelOperations(Storm& storm, const Scene& sample)
{
    const auto add = [&](const QByteArray& name, std::function<void(SkinBase*)> act) {
        addOperation<SkinBase>(storm, sample, name, std::move(act));
    };
    for (const char* button : {"mute_off", "mute_on"}) {
        const QString name = QLatin1String(button);
        add(QByteArray("press and release ") + button, [name](SkinBase* panel) {
            panel->pressButton(name);
            panel->releaseButton(name);
        });
        for (const SkinButtonState state : {Normal, Pressed, Focus, Disabled, Hidden})
            add(QByteArray("held, then state ") + QByteArray::number(state) + ' ' + button,
                [name, state](SkinBase* panel) {
                    panel->pressButton(name);
                    panel->setButtonState(name, state);
                });
        add(QByteArray("held, then disabled ") + button, [name](SkinBase* panel) {
            panel->pressButton(name);
            panel->disableButton(name);
        });
        add(QByteArray("held, then hidden ") + button, [name](SkinBase* panel) {
            panel->pressButton(name);
            panel->hideButton(name);
        });
        add(QByteArray("held, then normal ") + button, [name](SkinBase* panel) {
            panel->pressButton(name);
            panel->showNormal(name);
        });
    }
}

void addButtons(Storm& storm, const Scene& sample)
{
    // Panels that have none of their own may be given some.
    addOperation<SkinBase>(storm, sample, "press and release in another section", [](SkinBase* panel) {
        panel->SkinBase::do_configloading(QStringLiteral("Volume"));
        panel->pressButton(QStringLiteral("mute_off"));
        panel->releaseButton(QStringLiteral("mute_off"));
    });
}

void addRangeOperations(Storm& storm, const Scene& sample)
{
    const auto add = [&](const QByteArray& name, std::function<void(QRangeControl*)> act) {
        addOperation<QRangeControl>(storm, sample, name, std::move(act));
    };
    add("value 80", [](QRangeControl* control) { control->setValue(80); });
    add("page on", [](QRangeControl* control) { control->addPage(); });
    add("page back", [](QRangeControl* control) { control->subtractPage(); });
    add("line on", [](QRangeControl* control) { control->addLine(); });
    add("line back", [](QRangeControl* control) { control->subtractLine(); });
    add("other range", [](QRangeControl* control) { control->setRange(70, 90); });
    addOperation<SliderSkin>(storm, sample, "move to a position", [](SliderSkin* slider) { slider->moveSlider(100); });
    for (int part = 0; part < 10; ++part)
        addOperation<ScrollBarSkin>(storm, sample, "action " + QByteArray::number(part), [part](ScrollBarSkin* bar) {
            bar->action(static_cast<ScrollBarControl>(1 << part));
        });
}

void addListOperations(Storm& storm, const Scene& sample)
{
    using Box = ListBoxSkin;
    const auto add = [&](const QByteArray& name, std::function<void(Box*)> act) {
        addOperation<Box>(storm, sample, name, std::move(act));
    };
    add("current item", [](Box* box) { box->setCurrentItem(5); });
    add("selected item", [](Box* box) { box->setSelected(3, true); });
    add("selected twice", [](Box* box) {
        const QPointer<Box> alive = box;
        box->setSelected(3, true);
        if (alive)
            box->setSelected(3, false);
    });
    add("remove the current item", [](Box* box) {
        const QPointer<Box> alive = box;
        box->setSelected(2, true);
        if (alive)
            box->setCurrentItem(2);
        if (alive)
            box->removeItem(2);
    });
    add("change the current item", [](Box* box) {
        const QPointer<Box> alive = box;
        box->setCurrentItem(2);
        if (alive)
            box->changeItem(QStringLiteral("new"), 2);
    });
    add("range", [](Box* box) { box->selectRange(box->item(1), box->item(4), false, true, true); });
    add("end in sight", [](Box* box) { box->setBottomItem(11); });
    add("first item with the focus", [](Box* box) {
        const QPointer<Box> alive = box;
        box->clear();
        box->setFocus();
        if (alive)
            box->insertItem(QStringLiteral("first"));
    });
    add("fewer items", [](Box* box) {
        const QPointer<Box> alive = box;
        box->setContentsPos(0, 100);
        for (int i = 0; i < 10 && alive; ++i)
            box->removeItem(0);
        if (alive)
            box->refreshSlot();
    });
    for (const auto mode : {Box::Single, Box::Multi, Box::Extended, Box::NoSelection})
        add("mode " + QByteArray::number(mode), [mode](Box* box) {
            const QPointer<Box> alive = box;
            box->selectAll(true);
            if (alive)
                box->setSelectionMode(mode);
        });
}

} // namespace

std::vector<Stimulus> stormFor(const Kind& kind)
{
    const Scene sample(kind);
    Storm storm;
    addStylus(storm, sample.widget->size());
    addKeys(storm, sample);
    addStates(storm);
    addSlots(storm, sample);
    addPanelOperations(storm, sample);
    addButtons(storm, sample);
    addRangeOperations(storm, sample);
    addListOperations(storm, sample);
    return storm;
}

} // namespace lifetimetest
