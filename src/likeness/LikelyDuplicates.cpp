// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "likeness/LikelyDuplicates.h"

#include "likeness/Blocks.h"
#include "likeness/Evidence.h"
#include "likeness/TwoThreads.h"

#include <QLocale>

#include <algorithm>
#include <optional>
#include <tuple>

namespace {

struct Link
{
    CandidatePair pair;
    Evidence evidence;
    double score = 0;
};

std::optional<LikenessGrade> gradeOf(double score)
{
    if (score >= kCertainFrom)
        return LikenessGrade::Certain;
    if (score >= kLikelyFrom)
        return LikenessGrade::Likely;
    return score >= kPossibleFrom ? std::optional(LikenessGrade::Possible) : std::nullopt;
}

using AreDifferent = std::function<bool(std::size_t, std::size_t)>;

/// Contacts that were put together, with the links that did it.
class Clusters
{
public:
    Clusters(const BookTraits &book, const PriorOdds &prior, const AreDifferent &areDifferent)
        : m_book(book), m_prior(prior), m_areDifferent(areDifferent), m_places(book.contacts.size(), kNowhere)
    { }

    /// Unless a member of one of the two clusters is surely not one of the other.
    void join(const Link &link, LikenessGrade grade)
    {
        const std::size_t a = placeOf(link.pair.first);
        const std::size_t b = placeOf(link.pair.second);
        if (a == b || !fit(m_clusters[a], m_clusters[b], link.evidence))
            return;
        Cluster &to = m_clusters[a];
        Cluster &from = m_clusters[b];
        for (const quint32 member : from.members)
            m_places[member] = a;
        to.members.insert(to.members.end(), from.members.begin(), from.members.end());
        to.links.insert(to.links.end(), from.links.begin(), from.links.end());
        to.links.push_back(&link);
        to.grade = std::max({to.grade, from.grade, grade});
        from = {};
    }

    std::vector<LikelyGroup> groups() const
    {
        std::vector<LikelyGroup> groups;
        for (const Cluster &cluster : m_clusters) {
            if (cluster.links.empty())
                continue;
            LikelyGroup group{{cluster.members.begin(), cluster.members.end()}, cluster.grade, {}};
            std::ranges::sort(group.members);
            for (const Link *const link : cluster.links) {
                const auto [first, second] = std::minmax(link->pair.first, link->pair.second);
                for (const QString &reason : reasonsOf(link->evidence))
                    group.reasons.push_back({first, second, reason});
            }
            std::ranges::stable_sort(
                group.reasons, {}, [](const LikenessReason &reason) { return std::pair(reason.first, reason.second); });
            groups.push_back(std::move(group));
        }
        return groups;
    }

    bool areTogether(const CandidatePair &pair) const
    {
        return m_places[pair.first] != kNowhere && m_places[pair.first] == m_places[pair.second];
    }

private:
    static constexpr std::size_t kNowhere = ~std::size_t{0};

    struct Cluster
    {
        std::vector<quint32> members;
        std::vector<const Link *> links;
        LikenessGrade grade = LikenessGrade::Certain;
    };

    std::size_t placeOf(quint32 contact)
    {
        if (m_places[contact] == kNowhere) {
            m_places[contact] = m_clusters.size();
            m_clusters.push_back({{contact}, {}, LikenessGrade::Certain});
        }
        return m_places[contact];
    }

    bool fit(const Cluster &a, const Cluster &b, const Evidence &link) const
    {
        const auto isUnlike = [&](quint32 first) {
            return std::ranges::any_of(b.members, [&](quint32 second) { return m_areDifferent(first, second); });
        };
        if (m_areDifferent && std::ranges::any_of(a.members, isUnlike))
            return false;
        constexpr std::size_t kAsked = 20; // of each, so that a cluster of thousands takes no time
        for (std::size_t i = 0; i < std::min(kAsked, a.members.size()); ++i) {
            for (std::size_t j = 0; j < std::min(kAsked, b.members.size()); ++j) {
                const Evidence evidence = compare(m_book, a.members[i], b.members[j]);
                if (excludesOnePerson(evidence, m_prior, link.agreeGiven() && link.agreeFamily()))
                    return false;
            }
        }
        return true;
    }

    const BookTraits &m_book;
    PriorOdds m_prior;
    const AreDifferent &m_areDifferent;
    std::vector<Cluster> m_clusters;
    std::vector<std::size_t> m_places; // of each contact in m_clusters
};

struct Compared
{
    BookHabits habits;
    std::vector<Link> links; ///< those that may be of some grade
};

/// Incomplete when @p progress gave it up.
Compared compareAll(const BookTraits &book, std::span<const CandidatePair> pairs, const LikenessProgress &progress)
{
    Compared compared{BookHabits(book.contacts.size()), {}};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (!progress(static_cast<double>(i) / static_cast<double>(pairs.size())))
            break;
        const Evidence evidence = compare(book, pairs[i].first, pairs[i].second);
        compared.habits.count(evidence);
        if (mayBeOnePerson(evidence))
            compared.links.push_back({pairs[i], evidence});
    }
    return compared;
}

struct Links
{
    std::vector<Link> links; ///< those of some grade, the best first
    PriorOdds prior;
};

Links linksOf(const BookTraits &book, std::span<const CandidatePair> pairs, const LikenessProgress &progress)
{
    Compared compared{BookHabits(book.contacts.size()), {}};
    Compared rest = compared;
    const std::size_t half = pairs.size() / 2;
    inTwoThreads(
        progress, [&](const LikenessProgress &go) { compared = compareAll(book, pairs.first(half), go); },
        [&](const LikenessProgress &go) { rest = compareAll(book, pairs.subspan(half), go); });
    compared.habits.add(rest.habits);
    std::vector<Link> &links = compared.links;
    links.insert(links.end(), rest.links.begin(), rest.links.end());
    const PriorOdds prior = compared.habits.priorOdds();
    for (Link &link : links)
        link.score = scoreOf(link.evidence, prior);
    std::erase_if(links, [](const Link &link) { return link.score < kPossibleFrom; });
    const auto rank = [&](quint32 contact) { return book.contacts[contact].rank; };
    for (auto &[pair, evidence, score] : links) { // so that the order of the book does not count
        if (rank(pair.first) > rank(pair.second))
            std::swap(pair.first, pair.second);
    }
    std::ranges::sort(links, {},
        [&](const Link &link) { return std::tuple(-link.score, rank(link.pair.first), rank(link.pair.second)); });
    return {std::move(links), prior};
}

} // namespace

LikelyDuplicates findLikelyDuplicates(std::span<const PersonSnapshot> people, LikenessGrade upTo, const QString &region,
    const std::function<bool(double done)> &progress, const std::function<bool(std::size_t, std::size_t)> &areDifferent)
{
    LikelyDuplicates result;
    double told = -1;
    const auto part = [&](double from, double to) {
        return [&, from, to](double done) {
            constexpr double kStep = 0.002;
            const double all = from + (to - from) * done;
            if (all >= told + kStep) {
                told = all;
                result.isCancelled = result.isCancelled || !progress(all);
            }
            return !result.isCancelled;
        };
    };
    const BookTraits book = traitsOf(people, region, part(0, 0.4));
    if (result.isCancelled)
        return result;
    const Candidates candidates = candidatePairs(book, part(0.4, 0.6));
    if (result.isCancelled)
        return result;
    const auto [links, prior] = linksOf(book, candidates.pairs, part(0.6, 1));
    if (result.isCancelled)
        return result;
    result.crowded = candidates.crowded;
    Clusters strong(book, prior, areDifferent);
    Clusters possible(book, prior, areDifferent);
    for (const Link &link : links) {
        const LikenessGrade grade = *gradeOf(link.score);
        if (grade > upTo)
            break; // the best come first
        if (grade != LikenessGrade::Possible)
            strong.join(link, grade);
        else if (!strong.areTogether(link.pair))
            possible.join(link, grade);
    }
    result.groups = strong.groups();
    const auto more = possible.groups();
    result.groups.insert(result.groups.end(), more.begin(), more.end());
    std::ranges::sort(
        result.groups, {}, [](const LikelyGroup &group) { return std::pair(group.grade, group.members.front()); });
    return result;
}

QString regionOfUser()
{
    const QString code = QLocale::system().name().section(u'_', -1);
    return code.size() == 2 && code.isUpper() ? code : QString();
}
