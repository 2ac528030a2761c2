#include "lifetime/storm.h"
#include "listbox/listbox_skin.h"
#include "media/mediafixture.h"
#include "media/volumefixture.h"
#include "scroll/viewportwidget.h"

#include <map>
#include <set>

using namespace lifetimetest;

namespace
{

// What a receiver deletes.
enum Victim { Sender, Parent, TopLevel, Items };

const char* nameOf(int victim)
{
    const char* const names[] = {"the sender", "its parent", "its window", "all items"};
    return names[victim];
}

// A stimulus at which a signal is emitted; the first and the last of its emissions are tried.
struct Occasion {
    int stimulus;
    int emissions;
};

// What a storm brought about in widgets of one kind.
struct Findings {
    std::vector<Stimulus> storm;
    std::map<Emission, std::vector<Occasion>> occasions;
    // Of signals, with the class that declares them.
    std::map<Emission, QByteArray> names;
};

std::vector<Emission> emissionsOf(const Kind& kind, const Stimulus& stimulus)
{
    Scene scene(kind);
    std::vector<Emission> emissions;
    scene.listen([&](const Emission& emission) { emissions.push_back(emission); });
    stimulus.act(scene);
    QCoreApplication::processEvents();
    return emissions;
}

Findings weather(const Kind& kind)
{
    Findings findings;
    findings.storm = stormFor(kind);
    {
        const Scene sample(kind);
        const QList<QPointer<QWidget>> senders = sample.senders();
        for (int i = 0; i < senders.size(); ++i)
            for (const QMetaMethod& signal : signalsOf(senders[i]))
                findings.names[{i, signal.methodIndex()}] =
                    QByteArray(senders[i]->metaObject()->className()) + "::" + signal.methodSignature();
    }
    // Stimuli of one sort that have the same effect go the same way through the code.
    std::set<std::pair<QByteArray, std::vector<Emission>>> seen;
    for (size_t i = 0; i < findings.storm.size(); ++i) {
        const std::vector<Emission> emissions = emissionsOf(kind, findings.storm[i]);
        if (!seen.emplace(findings.storm[i].sort, emissions).second)
            continue;
        for (const Emission& emission : std::set<Emission>(emissions.begin(), emissions.end()))
            findings.occasions[emission].push_back(
                {int(i), int(std::count(emissions.begin(), emissions.end(), emission))});
    }
    return findings;
}

const std::vector<Findings>& allFindings()
{
    static const std::vector<Findings> all = [] {
        std::vector<Findings> result;
        for (const Kind& kind : kinds())
            result.push_back(weather(kind));
        return result;
    }();
    return all;
}

// Declared, and by intention never emitted.
const QList<QByteArray> silentSignals{"ScrollBarSkin::sliderMoved(int)"};

// A view cannot do without its viewport, so that only the view counts as a parent.
QWidget* parentOf(const QWidget* widget)
{
    QWidget* parent = widget->parentWidget();
    while (dynamic_cast<skinwidgets::ViewportWidget*>(parent))
        parent = parent->parentWidget();
    return parent;
}

QWidget* widgetToDelete(QWidget* sender, int victim)
{
    return victim == Sender ? sender : victim == Parent ? parentOf(sender) : sender->window();
}

void strike(QWidget* sender, int victim)
{
    if (victim == Items)
        static_cast<ListBoxSkin*>(sender)->clear();
    else
        delete widgetToDelete(sender, victim);
}

// What came of a receiver that strikes at an emission, counted from 1.
enum Outcome { NotEmitted, Died, Outlived };

Outcome struckAt(const Kind& kind, const Stimulus& stimulus, const Emission& chosen, int which, int victim)
{
    Scene scene(kind);
    const QPointer<QWidget> sender = scene.senders().at(chosen.sender);
    int count = 0;
    bool struck = false;
    scene.listen([&](const Emission& emission) {
        if (!(emission == chosen) || ++count != which)
            return;
        struck = true;
        strike(sender, victim);
    });
    stimulus.act(scene);
    QCoreApplication::processEvents();
    if (!struck)
        return NotEmitted;
    return sender ? Outlived : Died;
}

} // namespace

// Receivers that delete the sender of any signal, or what it lies in.
class TestLifetime : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void everyClassIsCovered();
    void everySignalIsEmitted_data();
    void everySignalIsEmitted();
    void receiverDeletes_data();
    void receiverDeletes();

private:
    std::unique_ptr<mediatest::Installation> installation;
};

void TestLifetime::initTestCase()
{
    installation = std::make_unique<mediatest::Installation>();
    mediatest::SliderSkins::install(*installation);
    const QByteArray sliders = [this] {
        QFile file(installation->skin(QStringLiteral("player")) + "/config");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }();
    mediatest::VolumeSkins::install(*installation);
    QFile file(installation->skin(QStringLiteral("player")) + "/config");
    QVERIFY(file.open(QIODevice::Append));
    file.write('\n' + sliders);
}

void TestLifetime::everyClassIsCovered()
{
    QVERIFY(declaredClasses().size() > 10);
    QStringList missing = declaredClasses();
    // No widget, and nobody deletes the application from within.
    missing.removeAll(QStringLiteral("QPEApplication"));
    for (const Kind& kind : kinds()) {
        const Scene scene(kind);
        QCOMPARE(QByteArray(scene.widget->metaObject()->className()), kind.type);
        missing.removeAll(QLatin1String(kind.type));
    }
    QCOMPARE(missing, QStringList());
}

void TestLifetime::everySignalIsEmitted_data()
{
    QTest::addColumn<bool>("emitted");
    std::map<QByteArray, bool> emitted;
    for (size_t i = 0; i < kinds().size(); ++i)
        for (const auto& [emission, name] : allFindings()[i].names)
            if (emission.sender == 0)
                emitted[name] |= allFindings()[i].occasions.count(emission) > 0;
    for (const auto& [name, was] : emitted)
        QTest::newRow(name) << was;
}

void TestLifetime::everySignalIsEmitted()
{
    QFETCH(bool, emitted);
    QCOMPARE(emitted, !silentSignals.contains(QTest::currentDataTag()));
}

void TestLifetime::receiverDeletes_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("sender");
    QTest::addColumn<int>("signal");
    for (size_t i = 0; i < kinds().size(); ++i)
        for (const auto& [emission, occasions] : allFindings()[i].occasions)
            QTest::addRow("%s: part %d, %s", kinds()[i].name().data(), emission.sender,
                          allFindings()[i].names.at(emission).data())
                << int(i) << emission.sender << emission.signal;
}

void TestLifetime::receiverDeletes()
{
    QFETCH(int, kind);
    QFETCH(int, sender);
    QFETCH(int, signal);
    const Emission emission{sender, signal};
    const Findings& findings = allFindings()[kind];
    const int lastVictim = sender == 0 && kinds()[kind].type == "ListBoxSkin" ? Items : TopLevel;
    // Where the pointer was before has its part in what a window tells, so that not every emission comes again.
    int struck = 0;
    for (const Occasion& occasion : findings.occasions.at(emission)) {
        const Stimulus& stimulus = findings.storm[occasion.stimulus];
        for (const int which : std::set<int>{1, occasion.emissions})
            for (int victim = Sender; victim <= lastVictim; ++victim) {
                if (qEnvironmentVariableIsSet("LIFETIME_TRACE"))
                    qInfo("%s, emission %d, deletes %s", stimulus.name.data(), which, nameOf(victim));
                const Outcome outcome = struckAt(kinds()[kind], stimulus, emission, which, victim);
                struck += outcome != NotEmitted;
                QVERIFY2(outcome != Outlived || victim == Items, stimulus.name.data());
            }
    }
    QVERIFY(struck > 0);
}

QTEST_MAIN(TestLifetime)
#include "tst_lifetime.moc"
