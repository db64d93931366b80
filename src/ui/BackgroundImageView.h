// The picture behind everything else in a panel.
#pragma once

#include <QIcon>
#include <QWidget>

namespace klova {

class BackgroundImageView final : public QWidget {
public:
    /// Shows the picture "<type>Bg" all over `frame`.
    BackgroundImageView(const QRect& frame, const QString& type);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon image_;
};

} // namespace klova
