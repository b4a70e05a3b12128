// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/HelpWindow.h"

#include "app/look/Controls.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QShortcut>
#include <QTextBrowser>

namespace {

constexpr int kPictureWidth = 640;

/// Markdown whose pictures come from the resources, no wider than the window.
class ManualView : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int type, const QUrl &name) override
    {
        if (type != QTextDocument::ImageResource)
            return QTextBrowser::loadResource(type, name);
        QImage picture(QStringLiteral(":/pictures/") % name.fileName());
        const int width = qRound(kPictureWidth * devicePixelRatioF());
        if (picture.width() > width)
            picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
        picture.setDevicePixelRatio(devicePixelRatioF());
        return picture;
    }
};

} // namespace

HelpWindow::HelpWindow(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setWindowTitle(tr("%1 help").arg(QApplication::applicationDisplayName()));
    setFirstSize(*this, {740, 800});
    QString manual;
    const QDir chapters(QStringLiteral(":/manual"));
    for (const QString &name : chapters.entryList(QDir::Files, QDir::Name)) {
        QFile chapter(chapters.filePath(name));
        if (chapter.open(QIODevice::ReadOnly))
            manual += QString::fromUtf8(chapter.readAll()) % QStringLiteral("\n\n");
    }
    auto *view = new ManualView(this);
    view->setAccessibleName(windowTitle());
    view->setOpenExternalLinks(true);
    view->setMarkdown(manual);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
}
