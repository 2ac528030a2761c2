#ifndef SKINWIDGETS_LISTBOX_TEXTWIDTHS_H
#define SKINWIDGETS_LISTBOX_TEXTWIDTHS_H

#include <QFont>
#include <QFontMetrics>

namespace skinwidgets
{

// Measures many texts in one font, each exactly as QFontMetrics::horizontalAdvance() does.
class TextWidths
{
public:
    explicit TextWidths(const QFontMetrics& metrics) : m_metrics(metrics) {}

    const QFontMetrics& metrics() const { return m_metrics; }
    int width(const QString& text);

private:
    QFontMetrics m_metrics;
};

} // namespace skinwidgets

#endif
