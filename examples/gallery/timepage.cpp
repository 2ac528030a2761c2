#include "timepage.h"

#include "media/timeskin.h"

#include <QTime>
#include <QTimer>

namespace
{

const char group[] = "Time";

} // namespace

TimePage::TimePage(QWidget* parent)
    : Page(tr("Time display"),
           tr("Six figures and two colons, each composed for its place in advance. Hours count on beyond a day."),
           parent)
{
    addTime(tr("As built"), 0, 0, 0);
    addTime(tr("3723 seconds"), 3723, 0, 1);
    addTime(tr("45296 seconds"), 45296, 0, 2);
    addTime(tr("68889 seconds"), 68889, 1, 0);
    addTime(tr("359999 seconds, the last that fits"), 359999, 1, 1);
    addClock(1, 2);
}

void TimePage::addTime(const QString& caption, unsigned int seconds, int row, int column)
{
    auto* const time = new TimeSkin(addCard(caption, row, column), group);
    time->update_time(seconds);
    placeIn(time);
}

void TimePage::addClock(int row, int column)
{
    auto* const clock = new TimeSkin(addCard(tr("The time of day, running"), row, column), group);
    const auto show = [clock] {
        clock->update_time(static_cast<unsigned int>(QTime(0, 0).secsTo(QTime::currentTime())));
    };
    auto* const timer = new QTimer(clock);
    connect(timer, &QTimer::timeout, clock, show);
    timer->start(250);
    show();
    placeIn(clock);
}
