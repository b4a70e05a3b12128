// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ContactPicture.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <array>

namespace {

constexpr int kLargestPictureMiB = 64; // as decoded
constexpr qint64 kMostPoints = 4096LL * 4096; // scaling takes four bytes a point, however few a format takes
constexpr int kLargestSide = 16'384;
constexpr int kLongestShape = 4; // as many times as long as wide

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

bool isTooLarge(const QSize &size)
{
    return size.width() > kLargestSide || size.height() > kLargestSide
        || qint64(size.width()) * size.height() > kMostPoints;
}

QImage withoutLongEnds(const QImage &image)
{
    const QSize most(std::min(image.width(), kLongestShape * image.height()),
        std::min(image.height(), kLongestShape * image.width()));
    if (most == image.size())
        return image;
    return image.copy(QRect(QPoint((image.width() - most.width()) / 2, (image.height() - most.height()) / 2), most));
}

} // namespace

QImage decodedPicture(const QByteArray &imageFile, int side)
{
    const Format *format = formatOf(imageFile);
    if (!format || imageFile.size() > kLargestPictureFile)
        return {};
    QBuffer buffer;
    buffer.setData(imageFile);
    QImageReader reader(&buffer, format->name);
    reader.setAutoDetectImageFormat(false); // or every decoder that is installed would have a look at the bytes
    QImageReader::setAllocationLimit(kLargestPictureMiB);
    if (isTooLarge(reader.size()))
        return {};
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull() || isTooLarge(image.size())) // a format may not tell beforehand
        return {};
    return withoutLongEnds(image).scaled(side, side, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
}
