#ifndef SKINWIDGETS_TESTS_LIFETIME_STORM_H
#define SKINWIDGETS_TESTS_LIFETIME_STORM_H

#include "lifetime/scene.h"

namespace lifetimetest
{

// Something that happens to a widget, from the first event to the last. It goes on as far as it can when the widget is
// deleted on the way.
struct Stimulus {
    // Stimuli of one sort differ in where they happen only.
    QByteArray sort;
    QByteArray name;
    std::function<void(Scene&)> act;
};

// Everything that can happen to a widget of that kind: input at places all over it, straight and through the window,
// keys, events of its state, due timers, its slots with plain arguments, and its operations.
std::vector<Stimulus> stormFor(const Kind& kind);

} // namespace lifetimetest

#endif
