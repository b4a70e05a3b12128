// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Standard labels have the form "_$!<Word>!$_"; all other labels are custom.
inline const QString kABHomeLabel = QStringLiteral("_$!<Home>!$_");
inline const QString kABWorkLabel = QStringLiteral("_$!<Work>!$_");
inline const QString kABOtherLabel = QStringLiteral("_$!<Other>!$_");
inline const QString kABHomePageLabel = QStringLiteral("_$!<HomePage>!$_");

/// "_$!<Home>!$_" reads "Home"; others are unchanged.
inline QString readableLabel(const QString &label)
{
    constexpr QLatin1StringView begin("_$!<");
    constexpr QLatin1StringView end(">!$_");
    const bool isStandard = label.startsWith(begin) && label.endsWith(end) && label.size() > begin.size() + end.size();
    return isStandard ? label.sliced(begin.size()).chopped(end.size()) : label;
}

inline const QString kABEmailHomeLabel = kABHomeLabel;
inline const QString kABEmailWorkLabel = kABWorkLabel;
inline const QString kABAddressHomeLabel = kABHomeLabel;
inline const QString kABAddressWorkLabel = kABWorkLabel;

inline const QString kABPhoneHomeLabel = kABHomeLabel;
inline const QString kABPhoneWorkLabel = kABWorkLabel;
inline const QString kABPhoneMobileLabel = QStringLiteral("_$!<Mobile>!$_");
inline const QString kABPhoneMainLabel = QStringLiteral("_$!<Main>!$_");
inline const QString kABPhoneHomeFAXLabel = QStringLiteral("_$!<HomeFAX>!$_");
inline const QString kABPhoneWorkFAXLabel = QStringLiteral("_$!<WorkFAX>!$_");
inline const QString kABPhonePagerLabel = QStringLiteral("_$!<Pager>!$_");
inline const QString kABPhoneiPhoneLabel = QStringLiteral("_$!<iPhone>!$_");

inline const QString kABFatherLabel = QStringLiteral("_$!<Father>!$_");
inline const QString kABMotherLabel = QStringLiteral("_$!<Mother>!$_");
inline const QString kABParentLabel = QStringLiteral("_$!<Parent>!$_");
inline const QString kABBrotherLabel = QStringLiteral("_$!<Brother>!$_");
inline const QString kABSisterLabel = QStringLiteral("_$!<Sister>!$_");
inline const QString kABChildLabel = QStringLiteral("_$!<Child>!$_");
inline const QString kABFriendLabel = QStringLiteral("_$!<Friend>!$_");
inline const QString kABSpouseLabel = QStringLiteral("_$!<Spouse>!$_");
inline const QString kABPartnerLabel = QStringLiteral("_$!<Partner>!$_");
inline const QString kABAssistantLabel = QStringLiteral("_$!<Assistant>!$_");
inline const QString kABManagerLabel = QStringLiteral("_$!<Manager>!$_");

// Values of kABInstantMessageServiceKey.
inline const QString kABInstantMessageServiceAIM = QStringLiteral("AIMInstant");
inline const QString kABInstantMessageServiceFacebook = QStringLiteral("FacebookInstant");
inline const QString kABInstantMessageServiceGaduGadu = QStringLiteral("GaduGaduInstant");
inline const QString kABInstantMessageServiceGoogleTalk = QStringLiteral("GoogleTalkInstant");
inline const QString kABInstantMessageServiceICQ = QStringLiteral("ICQInstant");
inline const QString kABInstantMessageServiceJabber = QStringLiteral("JabberInstant");
inline const QString kABInstantMessageServiceMSN = QStringLiteral("MSNInstant");
inline const QString kABInstantMessageServiceQQ = QStringLiteral("QQInstant");
inline const QString kABInstantMessageServiceSkype = QStringLiteral("SkypeInstant");
inline const QString kABInstantMessageServiceYahoo = QStringLiteral("YahooInstant");

// Values of kABSocialProfileServiceKey.
inline const QString kABSocialProfileServiceFacebook = QStringLiteral("Facebook");
inline const QString kABSocialProfileServiceFlickr = QStringLiteral("Flickr");
inline const QString kABSocialProfileServiceLinkedIn = QStringLiteral("LinkedIn");
inline const QString kABSocialProfileServiceMySpace = QStringLiteral("MySpace");
inline const QString kABSocialProfileServiceTwitter = QStringLiteral("Twitter");
