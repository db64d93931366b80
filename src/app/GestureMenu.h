// The status menu as it is laid out and drawn.
#pragma once

#include <QMenu>

namespace klova {

class AppDelegate;

/// Dark, whatever the desktop's own colours, since the titles' colours are light.
class GestureMenu final : public QMenu {
public:
    /// Makes all entries and connects them to `delegate`, which is borrowed and outlives this.
    explicit GestureMenu(AppDelegate& delegate);
    ~GestureMenu() override;
    GestureMenu(const GestureMenu&) = delete;
    GestureMenu& operator=(const GestureMenu&) = delete;

protected:
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

private:
    void addShortCuts(AppDelegate& delegate);
    void addCommands(AppDelegate& delegate);
};

} // namespace klova
