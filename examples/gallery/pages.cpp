#include "pages.h"

#include "buttonspage.h"
#include "exitbuttonpage.h"
#include "imagebuttonpage.h"
#include "listboxpage.h"
#include "picturelabelpage.h"
#include "scrollbarpage.h"
#include "scrollviewpage.h"
#include "sliderpage.h"
#include "textlabelpage.h"
#include "timepage.h"
#include "titlebarpage.h"
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
        {QStringLiteral("Image button"), create<ImageButtonPage>},
        {QStringLiteral("Text label"), create<TextLabelPage>},
        {QStringLiteral("Picture label"), create<PictureLabelPage>},
        {QStringLiteral("Title bar"), create<TitleBarPage>},
        {QStringLiteral("Exit button"), create<ExitButtonPage>},
        {QStringLiteral("Scroll bar"), create<ScrollBarPage>},
        {QStringLiteral("Scroll view"), create<ScrollViewPage>},
        {QStringLiteral("List box"), create<ListBoxPage>},
    };
    return pages;
}
