#include "quiettest.h"

namespace widgettest
{

void QuietTest::init()
{
    expectedMessages.clear();
    setUp();
    m_messages = std::make_unique<skintest::Messages>();
}

void QuietTest::cleanup()
{
    // What a test left for later may print as well.
    QCoreApplication::processEvents();
    const QStringList printed = skintest::Messages::texts();
    m_messages.reset();
    tearDown();
    QCOMPARE(printed, expectedMessages);
}

} // namespace widgettest
