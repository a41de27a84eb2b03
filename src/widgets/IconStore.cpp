// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/IconStore.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QResource>
#include <QSvgRenderer>

namespace tessaranth {

namespace {

const QString root = QStringLiteral("/tsrthres");

/// Draws an icon at the size that is asked for; on a dark window dark lines become light and paper
/// becomes dark.
class LineIcon final : public QIconEngine {
public:
    explicit LineIcon(QByteArray drawing) : m_drawing(std::move(drawing)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        constexpr int dark = 128;
        const bool isOnDark = QGuiApplication::palette().color(QPalette::Window).lightness() < dark;
        QByteArray drawing = m_drawing;
        if (isOnDark)
            drawing.replace("#3a3f4a", "#d5d9e0").replace("#fbf7ec", "#30343c");
        QSvgRenderer renderer(drawing);
        painter->save();
        painter->setOpacity(mode == QIcon::Disabled ? 0.35 : 1.0);
        const int side = qMin(rect.width(), rect.height());
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(painter, QRectF(rect.x() + (rect.width() - side) / 2.0,
                                        rect.y() + (rect.height() - side) / 2.0, side, side));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new LineIcon(m_drawing); }

private:
    QByteArray m_drawing;
};

QIcon iconOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QIcon(new LineIcon(file.readAll())) : QIcon();
}

} // namespace

IconStore::IconStore(const QString& libraryFile) : m_library(libraryFile) {
    if (!m_library.isEmpty())
        QResource::registerResource(m_library, root);
}

IconStore::~IconStore() {
    if (!m_library.isEmpty())
        QResource::unregisterResource(m_library, root);
}

const QIcon& IconStore::icon(const QString& key) const {
    auto found = m_icons.find(key);
    if (found == m_icons.end()) {
        const QString file = QStringLiteral(":/tsrthres/icons/") + key + QStringLiteral(".svg");
        found = m_icons.insert(key, key.isEmpty() ? QIcon() : iconOf(file));
    }
    return *found;
}

QPixmap IconStore::pixmap(const QString& key, const QSize& size) const { return icon(key).pixmap(size); }

} // namespace tessaranth
