#include "lifetime/scene.h"

#include <QApplication>
#include <QFile>
#include <QRegularExpression>

namespace lifetimetest
{

namespace
{

bool isOfTheLibrary(const QObject* object)
{
    for (const QMetaObject* type = object->metaObject(); type; type = type->superClass())
        if (declaredClasses().contains(QLatin1String(type->className())))
            return true;
    return false;
}

bool isCovered(const QMetaMethod& method)
{
    const QLatin1String type(method.enclosingMetaObject()->className());
    // Qt's own setChecked() goes on working on a button that a receiver of toggled() deleted.
    const bool isButtons = type == QLatin1String("QAbstractButton") && method.name() != "toggled";
    return isButtons || declaredClasses().contains(type);
}

} // namespace

const QStringList& declaredClasses()
{
    static const QStringList classes = [] {
        const QRegularExpression declaration(
            QStringLiteral("class SKINWIDGETS_EXPORT (\\w+)[^{;]*\\{\\s*(?://[^\\n]*\\s*)*Q_OBJECT"));
        QStringList found;
        for (const QString& name : QStringLiteral(PUBLIC_HEADERS).split(' ')) {
            QFile header(QStringLiteral(SOURCE_DIR) + name);
            if (!header.open(QIODevice::ReadOnly))
                qFatal("cannot read %s", qPrintable(header.fileName()));
            auto match = declaration.globalMatch(QString::fromUtf8(header.readAll()));
            while (match.hasNext())
                found << match.next().captured(1);
        }
        return found;
    }();
    return classes;
}

QList<QMetaMethod> signalsOf(const QObject* object)
{
    QList<QMetaMethod> result;
    const QMetaObject* const type = object->metaObject();
    for (int i = 0; i < type->methodCount(); ++i)
        if (type->method(i).methodType() == QMetaMethod::Signal && isCovered(type->method(i)))
            result << type->method(i);
    return result;
}

Listener::Listener(const QObject* sender, const QMetaMethod& signal, std::function<void()> act) : m_act(std::move(act))
{
    connect(sender, signal, this, staticMetaObject.method(staticMetaObject.indexOfSlot("hear()")));
}

Scene::Scene(const Kind& kind)
{
    window->setObjectName(QStringLiteral("player"));
    window->resize(300, 300);
    parent->resize(260, 260);
    widget = kind.make(parent);
    window->show();
    window->activateWindow();
    QCoreApplication::processEvents();
}

QList<QPointer<QWidget>> Scene::senders() const
{
    QList<QPointer<QWidget>> result{widget};
    for (QWidget* part : widget->findChildren<QWidget*>())
        if (isOfTheLibrary(part))
            result << part;
    return result;
}

void Scene::listen(const std::function<void(const Emission&)>& told)
{
    const QList<QPointer<QWidget>> all = senders();
    for (int i = 0; i < all.size(); ++i)
        for (const QMetaMethod& signal : signalsOf(all[i])) {
            const Emission emission{i, signal.methodIndex()};
            m_listeners.push_back(std::make_unique<Listener>(all[i], signal, [told, emission] { told(emission); }));
        }
}

} // namespace lifetimetest
