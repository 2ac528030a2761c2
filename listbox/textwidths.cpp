#include "listbox/textwidths.h"

namespace skinwidgets
{

int TextWidths::width(const QString& text)
{
    return m_metrics.horizontalAdvance(text);
}

} // namespace skinwidgets
