// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
//
// peoplenook-pictures SAMPLE.vcf DAMAGED.vcf FOLDER: pictures of every window, light and dark. tools/pictures runs it.
#include "PictureMaker.h"

#include "app/look/CalmStyle.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QIcon>
#include <QStandardPaths>

int main(int argc, char *argv[])
{
    QStandardPaths::setTestModeEnabled(true); // the settings of the user stay out of it
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("peoplenook-pictures"));
    QApplication::setApplicationDisplayName(QStringLiteral("Brindle PeopleNook"));
    QApplication::setApplicationVersion(QStringLiteral(PEOPLENOOK_VERSION));
    QApplication::setStyle(new CalmStyle);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/art/peoplenook.png")));
    QApplication::setFont(QFont(QStringLiteral("Noto Sans"), 10)); // as most desktops have it
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);

    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 4 || !QDir().mkpath(arguments[3])) {
        qCritical("usage: peoplenook-pictures SAMPLE.vcf DAMAGED.vcf FOLDER");
        return 2;
    }
    for (const auto scheme : {Appearance::Scheme::Light, Appearance::Scheme::Dark}) {
        if (!PictureMaker(scheme, arguments[3]).takeAll(arguments[1], arguments[2]))
            return 1;
    }
    return 0;
}
