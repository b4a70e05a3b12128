// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/eds/EdsStore.h"

#include "contacts/eds/EdsSession.h"

#include <optional>

EdsStore::EdsStore(const EdsRequest &request)
    : m_guard(std::make_shared<CallGuard>(request.callLimit))
    , m_session(std::make_shared<EdsSession>(request.sourceUid.toUtf8(), request.dataFolder, m_guard))
    , m_name(QStringLiteral("eds:") % request.sourceUid)
{ }

EdsStore::~EdsStore()
{
    // Where the objects were made they are given back.
    m_guard->run([session = m_session] { session->close(); });
}

template <typename T, typename Job> Result<T> EdsStore::onThread(Job job) const
{
    const auto result = std::make_shared<std::optional<Result<T>>>();
    const bool ended = m_guard->run([result, session = m_session, job] { *result = job(*session); });
    if (!ended)
        return Error{ErrorKind::Unavailable, m_name % QStringLiteral(": the daemon does not answer")};
    return std::move(**result);
}

Result<std::unique_ptr<EdsStore>> EdsStore::open(const EdsRequest &request)
{
    std::unique_ptr<EdsStore> store(new EdsStore(request));
    const auto opened = store->onThread<void>([](EdsSession &session) { return session.open(); });
    if (!opened)
        return opened.error();
    store->m_name = store->m_session->source().name;
    store->m_sourceUid = store->m_session->source().uid;
    store->m_canWrite = !store->m_session->isReadOnly();
    return store;
}

bool EdsStore::isOffered()
{
    constexpr std::chrono::seconds limit{2};
    const auto guard = std::make_shared<CallGuard>(limit);
    const auto offered = std::make_shared<bool>(false);
    return guard->run([offered, guard] { *offered = EdsBook::isOffered(*guard); }) && *offered;
}

Result<std::vector<EdsBookInfo>> EdsStore::books(const EdsRequest &request)
{
    const EdsStore store(request);
    const auto sources = store.onThread<std::vector<EdsSource>>([](EdsSession &session) { return session.sources(); });
    if (!sources)
        return sources.error();
    std::vector<EdsBookInfo> books;
    for (const EdsSource &source : *sources)
        books.push_back({source.uid, source.name, source.isDefault});
    return books;
}

Result<std::vector<StoredRecord>> EdsStore::loadAll()
{
    return onThread<std::vector<StoredRecord>>(
        [progress = loadProgress()](EdsSession &session) { return session.loadAll(progress); });
}

Result<void> EdsStore::commit(const std::vector<RecordChange> &changes)
{
    return onThread<void>([changes](EdsSession &session) { return session.commit(changes); });
}

Result<std::vector<OutsideChange>> EdsStore::takeChangesFromOutside()
{
    return onThread<std::vector<OutsideChange>>([](EdsSession &session) { return session.takeChangesFromOutside(); });
}

void EdsStore::setChangeListener(std::function<void()> listener)
{
    m_guard->run([session = m_session, listener] { session->setChangeListener(listener); });
}

QString EdsStore::desktopId(const QString &uid) const
{
    return QStringLiteral("eds:") % m_sourceUid % u':' % uid;
}

Result<std::vector<ChangeSummary>> EdsStore::history()
{
    return onThread<std::vector<ChangeSummary>>([](EdsSession &session) { return session.history(); });
}

Result<ChangeStep> EdsStore::historyStep(const QString &causeId)
{
    return onThread<ChangeStep>([causeId](EdsSession &session) { return session.historyStep(causeId); });
}
