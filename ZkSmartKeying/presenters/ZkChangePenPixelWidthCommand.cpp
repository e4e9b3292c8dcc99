#include "ZkChangePenPixelWidthCommand.h"

#include "ZkSmartKeyingPresenter.h"

ZkChangePenPixelWidthCommand::ZkChangePenPixelWidthCommand(ZkSmartKeyingPresenter *presenter,
                                                           int newWidth)
    : m_presenter(presenter)
    , m_oldWidth(presenter->penPixelWidth())
    , m_newWidth(newWidth)
{ }

void ZkChangePenPixelWidthCommand::redo()
{
    m_presenter->setPenPixelWidth(m_newWidth);
}

void ZkChangePenPixelWidthCommand::undo()
{
    m_presenter->setPenPixelWidth(m_oldWidth);
}
