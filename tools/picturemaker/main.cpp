// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
//
// peoplenook-pictures [--long] SAMPLE.vcf DAMAGED.vcf FOLDER: pictures of every window, light and dark, with texts that
// are 40 % longer if so requested. tools/pictures runs it.
#include "PictureMaker.h"

#include "app/look/CalmStyle.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QIcon>
#include <QStandardPaths>
#include <QTranslator>

namespace {

/// Texts as long as German ones would be, to see what that clips.
class LongTexts : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *english, const char *, int) const override
    {
        const QString text = QString::fromUtf8(english);
        const qsizetype more = (text.size() * 2 + 4) / 5;
        return text + QString(QStringLiteral(" langer Text")).repeated(more / 12 + 1).first(more);
    }
};

} // namespace

int main(int argc, char *argv[])
{
    QStandardPaths::setTestModeEnabled(true); // the settings of the user stay out of it
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("peoplenook-pictures"));
    QApplication::setApplicationDisplayName(QStringLiteral("Brindle PeopleNook"));
    QApplication::setApplicationVersion(QStringLiteral(PEOPLENOOK_VERSION));
    QApplication::setStyle(new CalmStyle);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/art/peoplenook.png")));
    // A program without a display looks for no icons.
    QIcon::setThemeSearchPaths(QStandardPaths::locateAll(
        QStandardPaths::GenericDataLocation, QStringLiteral("icons"), QStandardPaths::LocateDirectory));
    QIcon::setThemeName(QStringLiteral("Adwaita"));
    QApplication::setFont(QFont(QStringLiteral("Noto Sans"), 10)); // as most desktops have it
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);

    QStringList arguments = QApplication::arguments();
    LongTexts longTexts;
    if (arguments.removeAll(QStringLiteral("--long")) > 0)
        QApplication::installTranslator(&longTexts);
    if (arguments.size() != 4 || !QDir().mkpath(arguments[3])) {
        qCritical("usage: peoplenook-pictures [--long] SAMPLE.vcf DAMAGED.vcf FOLDER");
        return 2;
    }
    for (const auto scheme : {Appearance::Scheme::Light, Appearance::Scheme::Dark}) {
        if (!PictureMaker(scheme, arguments[3]).takeAll(arguments[1], arguments[2]))
            return 1;
    }
    return 0;
}
