// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contacts/stores/eds/EdsStore.h"

#include "contacts/stores/eds/EdsHistory.h"
#include "contacts/stores/eds/EdsIgnored.h"
#include "contacts/stores/eds/EdsSession.h"

#include <optional>

EdsStore::EdsStore(const EdsRequest &request)
    : m_guard(std::make_shared<CallGuard>(request.callLimit))
    , m_session(std::make_shared<EdsSession>(request.sourceUid.toUtf8(), request.dataFolder, m_guard))
    , m_name(QStringLiteral("eds:") % request.sourceUid)
{ }

EdsStore::~EdsStore()
{
    // Where the objects were made they are given back.
    m_guard->run([session = m_session] { session->book().disconnect(); });
}

template <typename Job>
std::invoke_result_t<Job, EdsSession &> EdsStore::onThread(Job job, const std::function<bool()> &isWanted) const
{
    const auto result = std::make_shared<std::optional<std::invoke_result_t<Job, EdsSession &>>>();
    const auto work = [result, session = m_session, isReadOnly = m_isReadOnly, job] {
        *result = job(*session);
        *isReadOnly = session->book().isReadOnly();
    };
    const bool ended = m_guard->run(work, isWanted);
    if (!ended)
        return Error{ErrorKind::Unavailable, m_name % QStringLiteral(": the daemon does not answer")};
    return std::move(**result);
}

Result<std::unique_ptr<AddressBookStore>> EdsStore::open(const EdsRequest &request)
{
    std::unique_ptr<EdsStore> store(new EdsStore(request));
    const auto opened = store->onThread([](EdsSession &session) { return session.open(); });
    if (!opened)
        return opened.error();
    store->m_name = store->m_session->book().info().name;
    store->m_sourceUid = store->m_session->book().info().uid;
    store->m_folder = folderOfBook(request.dataFolder, store->m_sourceUid);
    return std::unique_ptr<AddressBookStore>(std::move(store));
}

bool EdsStore::isOffered()
{
    constexpr std::chrono::seconds limit{2};
    const auto guard = std::make_shared<CallGuard>(limit);
    const auto offered = std::make_shared<bool>(false);
    return guard->run([offered, guard] { *offered = BookObject::isOffered(*guard); }) && *offered;
}

Result<std::vector<EdsBookInfo>> EdsStore::books(const EdsRequest &request)
{
    return EdsStore(request).onThread([](EdsSession &session) { return session.book().books(); });
}

Result<std::vector<StoredRecord>> EdsStore::loadAll()
{
    // The listener is also asked, on this thread, while the daemon keeps the other one waiting.
    struct Listener
    {
        std::mutex mutex;
        LoadProgress tell;
        qint64 done = 0;
        qint64 total = 0;
    };
    const auto listener = std::make_shared<Listener>();
    listener->tell = loadProgress() ? loadProgress() : [](qint64, qint64) { return true; };
    const auto progress = [listener](qint64 done, qint64 total) {
        const std::scoped_lock lock(listener->mutex);
        listener->done = done;
        listener->total = total;
        return listener->tell(done, total);
    };
    const auto isWanted = [listener] {
        const std::scoped_lock lock(listener->mutex);
        return listener->tell(listener->done, listener->total);
    };
    return onThread([progress](EdsSession &session) { return session.loadAll(progress); }, isWanted);
}

Result<void> EdsStore::commit(const std::vector<RecordChange> &changes)
{
    return onThread([changes](EdsSession &session) { return session.commit(changes); });
}

Result<std::vector<StoredRecord>> EdsStore::takeChangesFromOutside()
{
    const auto look = [](EdsSession &session) { return session.takeChangesFromOutside(); };
    return onThread(look, [this] { return m_isLooking.load(); });
}

void EdsStore::setChangeListener(std::function<void()> listener)
{
    if (listener)
        m_isLooking = true;
    m_guard->run([session = m_session, listener] { session->book().setChangeListener(listener); });
}

QString EdsStore::desktopId(const QString &uid) const
{
    return QStringLiteral("eds:") % m_sourceUid % u':' % uid;
}

Result<std::vector<ChangeSummary>> EdsStore::history()
{
    return EdsHistory::summaries(m_folder);
}

Result<ChangeStep> EdsStore::historyStep(const QString &causeId)
{
    return EdsHistory::step(m_folder, causeId);
}

Result<std::vector<Ignored>> EdsStore::ignored()
{
    return EdsIgnored::read(m_folder);
}

Result<void> EdsStore::changeIgnored(const std::vector<Ignored> &added, const QStringList &removedIds)
{
    return canWrite() ? EdsIgnored::change(m_folder, added, removedIds) : Result<void>(readOnlyReason());
}
