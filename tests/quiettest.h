#ifndef SKINWIDGETS_TESTS_QUIETTEST_H
#define SKINWIDGETS_TESTS_QUIETTEST_H

#include "skinbase/skinfixture.h"

#include <QStringList>

#include <memory>

namespace widgettest
{

// A test class that is set up anew for each of its tests, and whose tests print nothing but what they expect.
class QuietTest : public QObject
{
    Q_OBJECT

protected:
    // What each test needs, made before it and removed after it. What these two print does not count.
    virtual void setUp() {}
    virtual void tearDown() {}

    // What the current test prints, nothing unless it sets this.
    QStringList expectedMessages;

private slots:
    void init();
    void cleanup();

private:
    std::unique_ptr<skintest::Messages> m_messages;
};

} // namespace widgettest

#endif
