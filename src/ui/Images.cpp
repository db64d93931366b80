#include "ui/Images.h"

#include "platform/FatalError.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>
#include <utility>
#include <vector>

namespace klova {
namespace {

/// One picture, in one drawing or in several whose edges lie on whole pixels at other sizes.
struct Picture {
    explicit Picture(const QString& name) : drawing(":/" + name + ".svg") {
        for (const int side : {22, 24})
            if (const QString path = QString(":/%1-%2.svg").arg(name).arg(side);
                QFile::exists(path))
                fitted.emplace_back(side, std::make_unique<QSvgRenderer>(path));
    }

    QSvgRenderer& fitting(int pixels) {
        for (const auto& [side, fittedDrawing] : fitted)
            if (pixels % side == 0)
                return *fittedDrawing;
        return drawing;
    }

    QSvgRenderer drawing;
    std::vector<std::pair<int, std::unique_ptr<QSvgRenderer>>> fitted;
};

class VectorEngine final : public QIconEngine {
public:
    VectorEngine(QString name, std::shared_ptr<Picture> picture)
        : name_(std::move(name)), picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        const double pixels = rect.width() * painter->device()->devicePixelRatio();
        picture_->fitting(qRound(pixels)).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, result.rect(), mode, state);
        return result;
    }

    QString iconName() override { return name_; }

    QIconEngine* clone() const override { return new VectorEngine(name_, picture_); }

    /// The sizes that trays take, since they ask for no others.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
            sizes.append({side, side});
        return sizes;
    }

private:
    QString name_;
    std::shared_ptr<Picture> picture_;
};

} // namespace

QIcon imageNamed(const QString& name) {
    auto picture = std::make_shared<Picture>(name);
    if (!picture->drawing.isValid())
        fatalError("there is no picture named " + name.toStdString());
    return QIcon(new VectorEngine(name, std::move(picture))); // takes the engine
}

} // namespace klova
