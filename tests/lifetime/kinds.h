#ifndef SKINWIDGETS_TESTS_LIFETIME_KINDS_H
#define SKINWIDGETS_TESTS_LIFETIME_KINDS_H

#include <QByteArray>
#include <QWidget>

#include <functional>
#include <vector>

namespace lifetimetest
{

// A class of the library in one of its modes, and how one is made that reacts to input.
struct Kind {
    QByteArray type;
    QByteArray mode;
    std::function<QWidget*(QWidget* parent)> make;

    QByteArray name() const { return mode.isEmpty() ? type : type + ", " + mode; }
};

// At least one for every class that the public headers declare with signals or without. They find their pictures in the
// skin that installSkin() wrote, in windows named "player".
const std::vector<Kind>& kinds();

} // namespace lifetimetest

#endif
