#include "ZkCore.h"

ZkMessage::ZkMessage(int id, const QVariant &data)
    : m_id(id)
    , m_data(data)
{ }

ZkMessage::~ZkMessage() = default;

ZkPresenter::ZkPresenter(QObject *parent)
    : QObject(parent)
{ }

ZkPresenter::~ZkPresenter() = default;

void ZkPresenter::init() { }

void ZkPresenter::reset() { }

ZkUIView *ZkPresenter::view() const
{
    return m_view;
}

void ZkPresenter::setView(ZkUIView *view)
{
    m_view = view;
}

void ZkPresenter::clearView()
{
    m_view = nullptr;
}

bool ZkPresenter::dispatchMessage(ZkMessage *message)
{
    Q_UNUSED(message)
    return false;
}
