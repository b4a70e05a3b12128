// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/look/Appearance.h"
#include "app/start/AppDelegate.h"

/// Takes pictures of the real windows of a real application that works on an address book of its own.
class PictureMaker
{
public:
    /// Pictures go into @p folder as NAME-light.png or NAME-dark.png.
    PictureMaker(Appearance::Scheme scheme, QString folder);
    ~PictureMaker();

    /// Every window. The pictures of each kind of finding are taken in the light scheme only.
    /// @p sample is imported first, then @p damaged. False when something did not come up, or a file not be written.
    bool takeAll(const QString &sample, const QString &damaged);

private:
    bool waitFor(const std::function<bool()> &isSo, const char *what);
    bool open();
    bool import(const QString &file, const QString &picture);
    bool takeTable();
    bool takeDialogs();
    bool takeScan();
    bool takeFindings();
    /// Of the dialog that @p ask opens.
    bool takeQuestion(const QString &name, const std::function<void()> &ask);
    bool takeIgnored();
    bool takeHistory();
    QString schemeName() const;
    bool save(QWidget &window, const QString &name) const;

    const QString m_folder;
    Appearance m_appearance;
    AppDelegate m_delegate;
};
