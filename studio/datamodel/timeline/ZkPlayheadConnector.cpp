#include "ZkDataModel.h"

#include <QVector>

#include <map>

namespace {

// Shared, because an observer of a playhead may delete the connector while the others still follow.
class Followers : public std::enable_shared_from_this<Followers>
{
public:
    // Knows which playhead has moved, which the callback does not tell.
    class Follower : public IZkPlayheadObserver
    {
    public:
        Follower(Followers *owner, IZkPlayhead *playhead, int role)
            : m_owner(owner)
            , m_playhead(playhead)
            , m_role(role)
        {
            m_playhead->addObserver(this);
        }
        ~Follower() override { m_playhead->removeObserver(this); }

        IZkPlayhead *playhead() const { return m_playhead; }
        void onPlayheadMoved(qint64 frame) override { m_owner->follow(m_role, frame); }

    private:
        Q_DISABLE_COPY(Follower)
        Followers *const m_owner;
        IZkPlayhead *const m_playhead;
        const int m_role;
    };

    void add(IZkPlayhead *playhead, int role);
    void follow(int leadingRole, qint64 frame);

    void clear() { m_byRole.clear(); }

private:
    std::map<int, std::unique_ptr<Follower>> m_byRole;
};

void Followers::add(IZkPlayhead *playhead, int role)
{
    m_byRole.erase(role);
    if (!m_byRole.empty())
        playhead->setPosition(m_byRole.begin()->second->playhead()->position());
    m_byRole[role] = std::make_unique<Follower>(this, playhead, role);
    // Its range may not reach as far as the others stand.
    follow(role, playhead->position());
}

// No loop: a playhead that stands at the frame already reports nothing. One that is clamped by its
// range reports where it stopped, and the others come there.
void Followers::follow(int leadingRole, qint64 frame)
{
    const std::shared_ptr<Followers> keep = shared_from_this();
    QVector<int> roles;
    for (const auto &follower : m_byRole) {
        if (follower.first != leadingRole)
            roles.append(follower.first);
    }
    for (int role : qAsConst(roles)) {
        const auto follower = m_byRole.find(role);
        if (follower != m_byRole.end())
            follower->second->playhead()->setPosition(frame);
    }
}

} // namespace

class ZkPlayheadConnector::Private
{
public:
    const std::shared_ptr<Followers> followers = std::make_shared<Followers>();
};

ZkPlayheadConnector::ZkPlayheadConnector()
    : d(std::make_unique<Private>())
{ }

ZkPlayheadConnector::~ZkPlayheadConnector()
{
    clear();
}

void ZkPlayheadConnector::addPlayhead(IZkPlayhead *playhead, int role)
{
    if (playhead)
        d->followers->add(playhead, role);
}

void ZkPlayheadConnector::clear()
{
    d->followers->clear();
}
