#ifndef SKINWIDGETS_PLAYER_SCREENS_SCREEN_H
#define SKINWIDGETS_PLAYER_SCREENS_SCREEN_H

#include <QHash>
#include <QKeyCombination>
#include <QWidget>

#include <functional>
#include <initializer_list>

class Config;
class QLabel;
class SkinBase;

/*
 * One of the views that take turns in the player's window: a panel from one section of the skin, as large as the
 * section's background, that fills the screen, and keys that work wherever in the screen the focus is.
 *
 * The window shows one screen at a time and gives its panel the keyboard focus. A screen acts while it is hidden, too,
 * but its keys belong to whichever screen shows.
 */
class Screen : public QWidget
{
    Q_OBJECT

public:
    ~Screen() override;

    // Never null, empty where the skin has no such section.
    SkinBase* panel() const { return m_panel; }
    // False where the skin has no such section or its background cannot be read; then there is nothing to show.
    bool isSkinned() const;

signals:
    // A button of the panel was released, before its action runs.
    void operated();
    // The user has finished here.
    void closeRequested();

protected:
    enum KeyRepeat { Once, WhileHeld };
    using Action = std::function<void()>;

    // The parent lies in the player's window, whose name chooses the skin.
    Screen(const char* section, QWidget* parent);

    // What a button of the panel does; it replaces what it did before. A skin need not have the button.
    void addButton(const QString& name, const Action& action);
    // A label on the panel at the place that the skin gives under the key; null where it gives none.
    QLabel* createLabel(const Config& group, const QString& key);
    // Says on the panel which screen this is, at title_x and so on in title_color.
    void createTitle(const Config& group, const QString& text, const QColor& color);
    void addKeys(std::initializer_list<QKeyCombination> keys, KeyRepeat repeat, const Action& action);

    void showEvent(QShowEvent* event) override;

private:
    void runButton(const QObject* panel, const QString& name);

    SkinBase* m_panel;
    QHash<QString, Action> m_buttons;
};

#endif
