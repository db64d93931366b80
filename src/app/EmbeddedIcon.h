// An icon as a small window inside of a panel.
#pragma once

#include "platform/TrayArea.h"

#include <QIcon>
#include <QMenu>
#include <QWidget>

namespace klova {

class EmbeddedIcon final : public QWidget {
public:
    /// Asks `area` to embed it. `menu`, which is borrowed, opens on a click.
    EmbeddedIcon(TrayArea& area, const QIcon& icon, QMenu& menu);

    void setIcon(const QIcon& icon);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRect square() const;
    void cutOut();

    bool blends_;
    QIcon icon_;
    QMenu& menu_;
};

} // namespace klova
