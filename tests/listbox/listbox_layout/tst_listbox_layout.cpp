#include "listbox/listboxfixture.h"
#include <QtTest>
using namespace listboxtest;
class TestListBoxLayout : public QObject
{
    Q_OBJECT
private slots:
    void grids_data();
    void grids();
};
void TestListBoxLayout::grids_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");
    QTest::newRow("default") << 0 << "10x1 130x150";
    QTest::newRow("three columns") << 1 << "4x3 130x75";
    QTest::newRow("fit to width") << 2 << "4x3 130x75";
    QTest::newRow("four rows") << 3 << "4x3 130x75";
    QTest::newRow("fit to height") << 4 << "5x2 130x75";
}
void TestListBoxLayout::grids()
{
    QFETCH(int, mode);
    QFETCH(QString, expected);
    Box box;
    box.blocks(10);
    if (mode == 1)
        box.setColumnMode(3);
    if (mode == 2)
        box.setColumnMode(ListBoxSkin::FitToWidth);
    if (mode == 3)
        box.setRowMode(4);
    if (mode == 4)
        box.setRowMode(ListBoxSkin::FitToHeight);
    box.showSettled();
    QCOMPARE(QStringLiteral("%1x%2 %3x%4")
                 .arg(box.numRows())
                 .arg(box.numColumns())
                 .arg(box.contentsWidth())
                 .arg(box.contentsHeight()),
             expected);
}
QTEST_MAIN(TestListBoxLayout)
#include "tst_listbox_layout.moc"
