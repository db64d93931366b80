#include "ui/Images.h"

#include "platform/FatalError.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>

namespace klova {
namespace {

class VectorEngine final : public QIconEngine {
public:
    explicit VectorEngine(std::shared_ptr<QSvgRenderer> picture) : picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        picture_->render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, result.rect(), mode, state);
        return result;
    }

    QIconEngine* clone() const override { return new VectorEngine(picture_); }

    /// The sizes that trays take, since they ask for no others.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
            sizes.append({side, side});
        return sizes;
    }

private:
    std::shared_ptr<QSvgRenderer> picture_;
};

} // namespace

QIcon imageNamed(const QString& name) {
    auto picture = std::make_shared<QSvgRenderer>(":/" + name + ".svg");
    if (!picture->isValid())
        fatalError("there is no picture named " + name.toStdString());
    return QIcon(new VectorEngine(std::move(picture))); // takes the engine
}

} // namespace klova
