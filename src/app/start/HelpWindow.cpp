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
#include <QTextTable>

namespace {

constexpr int kPictureWidth = 640;
constexpr int kMargin = 16;
constexpr int kCellPadding = 3;

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

void makeCalm(QTextTable &table)
{
    QTextTableFormat format = table.format();
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setCellPadding(kCellPadding);
    table.setFormat(format);
}

QString textOfManual()
{
    QString manual;
    const QDir chapters(QStringLiteral(":/manual"));
    for (const QString &name : chapters.entryList(QDir::Files, QDir::Name)) {
        QFile chapter(chapters.filePath(name));
        if (chapter.open(QIODevice::ReadOnly))
            manual += QString::fromUtf8(chapter.readAll()) % QStringLiteral("\n\n");
    }
    return manual;
}

/// Without the title.
QString sectionOf(const QString &manual, const QString &title)
{
    return manual.section(QStringLiteral("\n## ") % title % u'\n', 1).section(QStringLiteral("\n## "), 0, 0);
}

} // namespace

HelpWindow::HelpWindow(Part part, QWidget *parent) : QWidget(parent, Qt::Window), m_part(part)
{
    const bool isOfKeys = part == Part::Keys;
    setWindowTitle(isOfKeys ? tr("Keyboard Shortcuts") : tr("%1 help").arg(QApplication::applicationDisplayName()));
    setFirstSize(*this, {isOfKeys ? 640 : 740, 800});
    auto *view = new ManualView(this);
    view->setAccessibleName(windowTitle());
    view->setOpenExternalLinks(true);
    view->document()->setDocumentMargin(kMargin);
    view->setMarkdown(isOfKeys ? sectionOf(textOfManual(), QStringLiteral("Keys")) : textOfManual());
    for (QTextFrame *frame : view->document()->rootFrame()->childFrames()) {
        if (auto *table = qobject_cast<QTextTable *>(frame))
            makeCalm(*table);
    }
    auto *layout = innerLayout<QVBoxLayout>(this);
    layout->addWidget(view);
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this, &QWidget::close);
}
