// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fix/Finding.h"

// What is wrong with the person of a finding, in words, one function a condition. What a text quotes of the person is
// read when it is made; a value that is gone meanwhile shows as "(null)".

QString unusualSuffixText(const Finding &finding);
QString unusualTitleText(const Finding &finding);
QString incompleteNameText(const Finding &finding);
QString spaceInFirstNameText(const Finding &finding);
QString duplicateContactText(const Finding &finding);
QString emptyNoteText(const Finding &finding);
QString duplicateEmailText(const Finding &finding);
QString duplicatePhoneText(const Finding &finding);
QString duplicateAddressText(const Finding &finding);
QString emptyNicknameText(const Finding &finding);
QString blankNameText(const Finding &finding);
/// Names the others who hold the address; whoever has no name is left out.
QString sharedEmailText(const Finding &finding);
QString invalidCharacterText(const Finding &finding);
