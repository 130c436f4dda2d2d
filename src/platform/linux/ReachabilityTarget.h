#pragma once

#include "platform/SCNetworkReachability.h"
#include "platform/linux/NetworkChanges.h"

#include <mutex>

namespace velq
{

/// What targets of every kind share: the callback, the scheduling, and calling back only when the
/// flags differ from those told last.
class ReachabilityTarget : public QObject, public SCNetworkReachability
{
    Q_OBJECT

public:
    bool setCallback(SCNetworkReachabilityCallBack callback, void *info) override;
    bool scheduleWithRunLoop() override;
    bool unscheduleFromRunLoop() override;

protected:
    using Flags = std::optional<SCNetworkReachabilityFlags>;

    /// Reads the flags for a look at a change and hands them to `onFlags`, at once or from the
    /// event loop.
    virtual void look() = 0;
    void onFlags(const Flags &flags);

private:
    SCNetworkReachabilityCallBack m_callback = nullptr;
    void *m_info = nullptr;
    std::unique_ptr<NetworkChanges> m_changes;
    /// What the last look said; the first one after scheduling only sets it.
    Flags m_told;
    bool m_hasTold = false;
};

/// An IPv4 address, the two special ones included.
class AddressTarget : public ReachabilityTarget
{
    Q_OBJECT

public:
    explicit AddressTarget(in_addr address);
    Flags getFlags() override;

protected:
    void look() override;

private:
    in_addr m_address;
};

/// A host name, resolved at each question. Looks at changes resolve on the global thread pool.
class NameTarget : public ReachabilityTarget
{
    Q_OBJECT

public:
    explicit NameTarget(QString name);
    ~NameTarget() override;
    Flags getFlags() override;

protected:
    void look() override;

private:
    /// Where a look-up on another thread leaves its answer for as long as the target is there.
    struct Answer {
        std::mutex mutex;
        NameTarget *target;
        Flags flags;
    };
    static void lookUp(const std::shared_ptr<Answer> &answer, const QByteArray &name);
    Q_INVOKABLE void onLooked();

    QString m_name;
    std::shared_ptr<Answer> m_answer;
    bool m_looking = false;
    bool m_lookAgain = false;
};

} // namespace velq
