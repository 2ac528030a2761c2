#ifndef SKINWIDGETS_BENCHMARKS_COMPARE_H
#define SKINWIDGETS_BENCHMARKS_COMPARE_H

#include <string>

// Names the two benchmarks of one comparison, so that the table at the end of a run can set them side by side. limit is
// the ratio ours / theirs that the project promises to stay below; 0 where it promises none. With a counter, its values
// are compared instead of the times.
struct Comparison {
    std::string title;
    std::string ours;
    std::string theirs;
    double limit = 0;
    std::string counter = {};
};

// Called before main() by static registrars, one for each comparison.
bool compare(Comparison comparison);

#endif
