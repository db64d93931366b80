// The status menu as the shell knows it: its outlets, and what they show.
#pragma once

#include <QAction>
#include <QMenu>
#include <QPointer>

namespace klova {

/// The outlets are weak and absent until a menu connects them. An operation that needs one that is
/// absent is a fatal error.
struct StatusMenu {
    QPointer<QMenu> menu;
    QPointer<QAction> preferencesMenuItem;
    QPointer<QAction> aboutMenuItem;
    QPointer<QAction> activationKeysMenuItem;
    QPointer<QAction> draggingMenuItem;
    QPointer<QAction> minimizingMenuItem;
    QPointer<QAction> reopenMenuItem;
    QPointer<QAction> maximizingMenuItem;
    QPointer<QAction> leftMenuItem;
    QPointer<QAction> rightMenuItem;
    QPointer<QAction> topMenuItem;
    QPointer<QAction> bottomMenuItem;
    QPointer<QAction> topLeftMenuItem;
    QPointer<QAction> topRightMenuItem;
    QPointer<QAction> bottomLeftMenuItem;
    QPointer<QAction> bottomRightMenuItem;
    QPointer<QAction> quitMenuItem;

    /// Show the settings that are in force. The colour of a title is the `data` of its action.
    void updateActivationKeyLabel() const;
    void updateShortCutLabels() const;

    /// Enables or disables the entries that open panels.
    void toggleShowMenuItems(bool enabled) const;
};

} // namespace klova
