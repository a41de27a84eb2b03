// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/ImagesTour.h"

#include "app/tour/TourCamera.h"
#include "attachments/forms/ImagesPanel.h"
#include "attachments/forms/frmAlign.h"
#include "attachments/forms/frmPic.h"
#include "items/ItemKind.h"
#include "items/forms/frmOrder.h"
#include "widgets/PictureView.h"

#include <QFile>
#include <QPainter>

namespace tessaranth {

namespace {

QImage cover(int number) {
    QImage image(900, 900, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(0, 0, 900, 900);
    ground.setColorAt(0, QColor::fromHsv(number * 70 % 360, 90, 230));
    ground.setColorAt(1, QColor::fromHsv(number * 70 % 360, 160, 90));
    painter.fillRect(image.rect(), ground);
    painter.setPen(QPen(Qt::white, 5));
    for (int line = 0; line < 5; ++line)
        painter.drawLine(90, 420 + line * 30, 810, 420 + line * 30);
    painter.setBrush(Qt::white);
    for (int note = 0; note < 6; ++note)
        painter.drawEllipse(QPointF(160 + note * 115, 540 - ((note * number) % 5) * 30), 20, 15);
    QFont font = painter.font();
    font.setPixelSize(90);
    painter.setFont(font);
    painter.drawText(QRect(90, 110, 720, 200), Qt::AlignLeft, QStringLiteral("Cover %1").arg(number));
    return image;
}

} // namespace

void tourImages(TourCamera& camera, const FormContext& context, OpenCards& cards) {
    const CardOwner card{itemKind(ItemKind::Recording)->code,
                         context.session.connection()
                             .single(QStringLiteral("SELECT RecID FROM Rec ORDER BY RecTitle"))
                             .toInteger()};
    const CardContext ofCard{context, cards, card.code, card.id};
    ImagesPanel panel(ofCard);
    panel.resize(300, 320);
    camera.take(panel, QStringLiteral("images-empty"));

    CardImages images(context.session, card);
    const char* const titles[] = {"Front cover", "Back cover", "Booklet, page 3", "Disc 1"};
    std::vector<qint64> ids;
    for (const char* title : titles)
        ids.push_back(images.add(cover(int(ids.size()) + 1), QLatin1String(title)));
    panel.load();
    camera.take(panel, QStringLiteral("images"));
    QFile::remove(images.path(ids.back()));
    panel.showPage(3);
    camera.take(panel, QStringLiteral("images-missed"));

    frmPic viewer(context, card, 1);
    camera.take(viewer, QStringLiteral("viewer-fit"));
    viewer.view()->setZoom(200);
    camera.take(viewer, QStringLiteral("viewer-zoom"));
    frmOrder::Entries entries;
    for (size_t i = 0; i < ids.size(); ++i)
        entries.emplace_back(ids[i], QLatin1String(titles[i]));
    frmOrder order(context.icons, QStringLiteral("Sort images"), QStringLiteral("Order of the images"),
                   QStringLiteral("Images"), entries);
    camera.take(order, QStringLiteral("order"));

    QFile stray(context.session.dataFolder(Session::Folder::Images) +
                QStringLiteral("/scan from the old disk.jpg"));
    if (stray.open(QIODevice::WriteOnly))
        stray.write(QByteArray(45000, ' '));
    stray.close();
    frmAlign align(context, nullptr);
    camera.take(align, QStringLiteral("align"));
    stray.remove();
    for (const qint64 id : ids)
        images.remove(id);
    align.load();
    camera.take(align, QStringLiteral("align-in-order"));
}

} // namespace tessaranth
