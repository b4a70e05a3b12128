// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/ProblemPlaces.h"

#include <QLabel>

/// Shows where the problem of a finding is, a line for each value. What is wrong in it is red and underlined; a wrong
/// blank is drawn as an open box.
class PlacesLabel : public QLabel
{
    Q_OBJECT

public:
    explicit PlacesLabel(QWidget *parent = nullptr);

    /// Hidden without any.
    void setPlaces(std::vector<ProblemPlace> places);

protected:
    void changeEvent(QEvent *event) override;

private:
    void write();

    std::vector<ProblemPlace> m_places;
};
