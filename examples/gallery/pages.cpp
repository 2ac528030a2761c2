#include "pages.h"

#include "buttonspage.h"
#include "scrollbarpage.h"
#include "sliderpage.h"
#include "timepage.h"
#include "volumepage.h"

namespace
{

template <class PageClass>
QWidget* create(QWidget* parent)
{
    return new PageClass(parent);
}

} // namespace

const std::vector<PageEntry>& allPages()
{
    static const std::vector<PageEntry> pages = {
        {QStringLiteral("Buttons"), create<ButtonsPage>},
        {QStringLiteral("Slider"), create<SliderPage>},
        {QStringLiteral("Time"), create<TimePage>},
        {QStringLiteral("Volume"), create<VolumePage>},
        {QStringLiteral("Scroll bar"), create<ScrollBarPage>},
    };
    return pages;
}
