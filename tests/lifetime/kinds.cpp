#include "lifetime/kinds.h"

#include "controls/imagebutton.h"
#include "controls/labelimage.h"
#include "controls/labelskin.h"
#include "controls/titlebar.h"
#include "controls/whineexitbutton.h"
#include "listbox/listboxfixture.h"
#include "media/sliderskin.h"
#include "media/timeskin.h"
#include "media/volumeskin.h"
#include "scroll/clipperwidget.h"
#include "scroll/scrollbarskin.h"

namespace lifetimetest
{

namespace
{

QWidget* makePanel(QWidget* parent)
{
    auto* const panel = new SkinBase(parent, "Volume");
    panel->do_configloading(QStringLiteral("Volume"));
    panel->showNormal(QStringLiteral("mute_off"));
    return panel;
}

template <class Slider>
QWidget* makeSlider(QWidget* parent, const char* group)
{
    auto* const slider = new Slider(0, 100, 10, 0, parent, group);
    slider->setValue(50);
    return slider;
}

QWidget* makeVolume(QWidget* parent, unsigned int level)
{
    auto* const volume = new VolumeSkin(parent, "Volume");
    volume->set_volumeRange(0, 10, 2);
    volume->set_volumeValue(level);
    return volume;
}

QWidget* makeScrollBar(QWidget* parent)
{
    auto* const bar = new ScrollBarSkin(parent, "bar");
    bar->setValue(50);
    bar->resize(20, 160);
    return bar;
}

template <class Button>
QWidget* makeButton(QWidget* parent)
{
    auto* const button = new Button(parent, "button");
    button->resize(30, 30);
    return button;
}

QWidget* makeImageButton(QWidget* parent, bool toggle)
{
    auto* const button = new ImageButton(parent, "button");
    if (toggle)
        button->setToggle();
    button->resize(30, 30);
    return button;
}

QWidget* makeView(QWidget* parent, bool withChildren)
{
    auto* const view = new ScrollViewSkin(parent, "view");
    view->resize(120, 100);
    view->resizeContents(400, 400);
    for (int i = 0; withChildren && i < 3; ++i)
        view->addChild(makeButton<QButton>(view->viewport()), 20, 60 * i);
    return view;
}

QWidget* makeListBox(QWidget* parent, ListBoxSkin::SelectionMode mode, bool columns = false)
{
    auto* const box = new ListBoxSkin(parent, "list");
    box->setSelectionMode(mode);
    box->resize(120, 100);
    if (columns)
        box->setColumnMode(ListBoxSkin::FitToWidth);
    for (int i = 0; i < 12; ++i)
        box->insertItem(new listboxtest::Block(40, 15, QString::number(i)));
    box->refreshSlot();
    return box;
}

template <class Widget>
QWidget* makeAny(QWidget* parent)
{
    auto* const widget = new Widget(parent, "widget");
    widget->resize(60, 40);
    return widget;
}

} // namespace

const std::vector<Kind>& kinds()
{
    using Box = ListBoxSkin;
    static const std::vector<Kind> all{
        {"SkinBase", "", makePanel},
        {"SliderSkin", "lying", [](QWidget* p) { return makeSlider<SliderSkin>(p, "Seek"); }},
        {"SliderSkin", "standing", [](QWidget* p) { return makeSlider<SliderSkin>(p, "Level"); }},
        {"TimeSkin", "", makeAny<TimeSkin>},
        {"VolumeSkin", "sounding", [](QWidget* p) { return makeVolume(p, 5); }},
        {"VolumeSkin", "silent", [](QWidget* p) { return makeVolume(p, 0); }},
        {"ImageButton", "", [](QWidget* p) { return makeImageButton(p, false); }},
        {"ImageButton", "toggle", [](QWidget* p) { return makeImageButton(p, true); }},
        {"TitleBar", "", makeAny<TitleBar>},
        {"QButton", "", makeButton<QButton>},
        {"WhineExitButton", "", makeButton<WhineExitButton>},
        {"LabelSkin", "", makeAny<LabelSkin>},
        {"LabelImage", "", [](QWidget* p) { return new LabelImage(p, "label"); }},
        {"ToolkitLabel", "", makeAny<ToolkitLabel>},
        {"ToolkitFrame", "", makeAny<ToolkitFrame>},
        {"DQClipperWidget", "", makeAny<DQClipperWidget>},
        {"ScrollBarSkin", "", makeScrollBar},
        {"ScrollViewSkin", "", [](QWidget* p) { return makeView(p, false); }},
        {"ScrollViewSkin", "with children", [](QWidget* p) { return makeView(p, true); }},
        {"ListBoxSkin", "single", [](QWidget* p) { return makeListBox(p, Box::Single); }},
        {"ListBoxSkin", "multi", [](QWidget* p) { return makeListBox(p, Box::Multi); }},
        {"ListBoxSkin", "extended", [](QWidget* p) { return makeListBox(p, Box::Extended); }},
        {"ListBoxSkin", "columns", [](QWidget* p) { return makeListBox(p, Box::Extended, true); }},
    };
    return all;
}

} // namespace lifetimetest
