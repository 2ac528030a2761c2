#include "toolkit/widgetflags.h"

#include <QWidget>

namespace skinwidgets
{

namespace
{

struct FlagMeaning {
    WFlags flag;
    Qt::WindowFlags windowFlags;
};

const FlagMeaning typeMeanings[] = {
    {Qt::WType_TopLevel, Qt::Window}, {Qt::WType_Modal, Qt::Dialog}, {Qt::WType_Popup, Qt::Popup},
    {Qt::WType_Desktop, Qt::Desktop}, {Qt::WStyle_Tool, Qt::Tool},   {Qt::WStyle_Dialog, Qt::Dialog},
};

const FlagMeaning hintMeanings[] = {
    {Qt::WStyle_NormalBorder, Qt::CustomizeWindowHint},
    {Qt::WStyle_DialogBorder, Qt::CustomizeWindowHint | Qt::MSWindowsFixedSizeDialogHint},
    {Qt::WStyle_Title, Qt::CustomizeWindowHint | Qt::WindowTitleHint},
    {Qt::WStyle_SysMenu, Qt::CustomizeWindowHint | Qt::WindowSystemMenuHint},
    {Qt::WStyle_Minimize, Qt::WindowMinimizeButtonHint},
    {Qt::WStyle_Maximize, Qt::WindowMaximizeButtonHint},
    {Qt::WStyle_StaysOnTop, Qt::WindowStaysOnTopHint},
    {Qt::WStyle_ContextHelp, Qt::WindowContextHelpButtonHint},
    {Qt::WStyle_NoBorderEx, Qt::FramelessWindowHint},
    {Qt::WX11BypassWM, Qt::X11BypassWindowManagerHint},
};

struct AttributeMeaning {
    WFlags flag;
    Qt::WidgetAttribute attribute;
};

const AttributeMeaning attributeMeanings[] = {
    {Qt::WDestructiveClose, Qt::WA_DeleteOnClose},
    {Qt::WMouseNoMask, Qt::WA_MouseNoMask},
    {Qt::WNorthWestGravity, Qt::WA_StaticContents},
    {Qt::WRepaintNoErase, Qt::WA_OpaquePaintEvent},
};

Qt::WindowFlags customizedHints(WFlags flags)
{
    Qt::WindowFlags result;
    for (const FlagMeaning& meaning : hintMeanings)
        if (flags & meaning.flag)
            result |= meaning.windowFlags;
    // A customised window that asks for no border at all gets none.
    const WFlags borders = Qt::WStyle_NormalBorder | Qt::WStyle_DialogBorder | Qt::WStyle_Title;
    if (!(flags & borders))
        result |= Qt::FramelessWindowHint;
    return result;
}

} // namespace

Qt::WindowFlags windowFlagsFor(WFlags flags)
{
    Qt::WindowFlags result;
    for (const FlagMeaning& meaning : typeMeanings)
        if (flags & meaning.flag)
            result |= meaning.windowFlags;
    if (flags & Qt::WStyle_Customize)
        result |= customizedHints(flags);
    if (flags & Qt::WX11BypassWM)
        result |= Qt::X11BypassWindowManagerHint;
    return result;
}

void applyWidgetFlags(QWidget* widget, WFlags flags)
{
    Qt::WindowFlags windowFlags = windowFlagsFor(flags);
    const bool window = widget->isWindow() || (windowFlags & Qt::Window);
    // How a window is framed means nothing for a widget inside one.
    if (window && windowFlags)
        widget->setWindowFlags(windowFlags | Qt::Window);
    if (flags & Qt::WType_Modal)
        widget->setWindowModality(Qt::ApplicationModal);
    for (const AttributeMeaning& meaning : attributeMeanings)
        if (flags & meaning.flag)
            widget->setAttribute(meaning.attribute);
}

} // namespace skinwidgets
