#ifndef SKINWIDGETS_EXAMPLES_GALLERY_PAGES_H
#define SKINWIDGETS_EXAMPLES_GALLERY_PAGES_H

#include <QString>

#include <vector>

class QWidget;

// A page of the gallery, by the name under which the list and the command line know it.
struct PageEntry {
    QString name;
    QWidget* (*create)(QWidget* parent);
};

// Every page in the order of the list. A new kind of widget adds its page here.
const std::vector<PageEntry>& allPages();

#endif
