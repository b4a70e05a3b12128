// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/ContactPicture.h"

#include "app/look/Colours.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <QStringBuilder>

#include <algorithm>
#include <array>

namespace {

struct Limits
{
    qint64 points; // scaling takes four bytes a point, however few a format takes
    int mebibytes; // as decoded
};
constexpr Limits kFromAnybody{4096LL * 4096, 64};
constexpr Limits kChosen{100'000'000, 400};
constexpr qint64 kLargestStoredFile = 20LL * 1024 * 1024;
constexpr int kLargestSide = 16'384;
constexpr int kLongestShape = 4; // as many times as long as wide
constexpr QSize kStoredSize(1024, 1024);
constexpr int kStoredQuality = 90;

struct Format
{
    const char *name; // Qt's
    QByteArrayView begin;
    qsizetype offset = 0;
};

// No formats that are programs in disguise (SVG, PDF), and none whose decoder would be asked for every file.
constexpr std::array kFormats{
    Format{"jpeg", QByteArrayView("\xFF\xD8\xFF", 3)},
    Format{"png", QByteArrayView("\x89PNG\r\n\x1A\n", 8)},
    Format{"gif", QByteArrayView("GIF8", 4)},
    Format{"bmp", QByteArrayView("BM", 2)},
    Format{"webp", QByteArrayView("WEBP", 4), 8},
    Format{"tiff", QByteArrayView("II*\0", 4)},
    Format{"tiff", QByteArrayView("MM\0*", 4)},
};

const Format *formatOf(QByteArrayView file)
{
    const auto found = std::ranges::find_if(kFormats, [file](const Format &format) {
        return file.size() > format.offset && file.sliced(format.offset).startsWith(format.begin);
    });
    return found == kFormats.end() ? nullptr : &*found;
}

bool isTooLarge(const QSize &size, const Limits &limits)
{
    return size.width() > kLargestSide || size.height() > kLargestSide
        || qint64(size.width()) * size.height() > limits.points;
}

QImage withoutLongEnds(const QImage &image)
{
    const QSize most(std::min(image.width(), kLongestShape * image.height()),
        std::min(image.height(), kLongestShape * image.width()));
    if (most == image.size())
        return image;
    return image.copy(QRect(QPoint((image.width() - most.width()) / 2, (image.height() - most.height()) / 2), most));
}

Result<QImage> decoded(const QByteArray &imageFile, const Limits &limits)
{
    const auto refused = [](const char *reason) {
        return Error{ErrorKind::Invalid, QCoreApplication::translate("ContactPicture", reason)};
    };
    const Format *format = formatOf(imageFile);
    if (!format)
        return refused(QT_TRANSLATE_NOOP("ContactPicture", "is not a picture (JPEG, PNG, GIF, BMP, WebP or TIFF)"));
    QBuffer buffer;
    buffer.setData(imageFile);
    QImageReader reader(&buffer, format->name);
    reader.setAutoDetectImageFormat(false); // or every decoder that is installed would have a look at the bytes
    QImageReader::setAllocationLimit(limits.mebibytes);
    const char *tooLarge = QT_TRANSLATE_NOOP("ContactPicture", "is too large a picture");
    if (isTooLarge(reader.size(), limits))
        return refused(tooLarge);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull())
        return Error{ErrorKind::Invalid,
            QCoreApplication::translate("ContactPicture", "is a damaged picture, or one of a kind that cannot be shown")
                % QStringLiteral(" (") % reader.errorString() % u')'};
    if (isTooLarge(image.size(), limits)) // a format may not tell beforehand
        return refused(tooLarge);
    return image;
}

/// BigHead.png, decoded once for each size, since lists paint it in every row.
QImage bigHead(int side)
{
    static QHash<int, QImage> heads;
    QImage &head = heads[side];
    if (head.isNull()) {
        head = QImage(QStringLiteral(":/art/BigHead.png"))
                   .scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                   .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    return head;
}

/// The head of BigHead.png, which is all that is not transparent in it.
QImage standIn(const QString &uid, int side)
{
    const Tint tint = tintFor(uid, QGuiApplication::palette());
    QImage head = bigHead(side);
    QPainter painter(&head);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(head.rect(), tint.figure);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    painter.fillRect(head.rect(), tint.ground);
    return head;
}

} // namespace

QImage decodedPicture(const QByteArray &imageFile, int side)
{
    const auto image = imageFile.size() > kLargestStoredFile ? QImage() : decoded(imageFile, kFromAnybody);
    if (!image || image->isNull())
        return {};
    return withoutLongEnds(*image).scaled(side, side, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
}

QPixmap personPicture(const QByteArray &imageFile, int size, qreal devicePixelRatio, const QString &uid)
{
    const int side = qRound(size * devicePixelRatio);
    QImage image = imageFile.isEmpty() ? QImage() : decodedPicture(imageFile, side);
    if (image.isNull())
        image = standIn(uid, side);
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath frame;
    frame.addEllipse(0, 0, side, side);
    painter.setClipPath(frame);
    painter.drawImage((side - image.width()) / 2, (side - image.height()) / 2, image);
    painter.end();
    picture.setDevicePixelRatio(devicePixelRatio);
    return picture;
}

Result<QByteArray> pictureToStore(const QByteArray &imageFile)
{
    const auto image = decoded(imageFile, kChosen);
    if (!image)
        return image.error();
    const bool isSmall = image->size().boundedTo(kStoredSize) == image->size();
    if (isSmall && !decodedPicture(imageFile, 1).isNull())
        return imageFile;
    const QImage smaller = isSmall ? *image : image->scaled(kStoredSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!smaller.save(&buffer, smaller.hasAlphaChannel() ? "PNG" : "JPEG", kStoredQuality))
        return Error{ErrorKind::Invalid, QCoreApplication::translate("ContactPicture", "cannot be made smaller")};
    return buffer.data();
}
