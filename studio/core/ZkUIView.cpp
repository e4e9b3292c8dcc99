#include "ZkCore.h"

ZkUIView::ZkUIView(ZkUIView *parent)
    : m_parentView(parent)
{ }

ZkUIView::~ZkUIView() = default;

ZkUIView *ZkUIView::parentView() const
{
    return m_parentView;
}

ZkPresenter *ZkUIView::viewPresenter() const
{
    return m_viewPresenter;
}

void ZkUIView::setViewPresenter(ZkPresenter *presenter)
{
    m_viewPresenter = presenter;
}

IZkUndoRedoService *ZkUIView::undoRedoService() const
{
    const ZkUIView *view = this;
    while (!view->m_undoRedoService && view->m_parentView)
        view = view->m_parentView;
    return view->m_undoRedoService;
}

void ZkUIView::setUndoRedoService(IZkUndoRedoService *service)
{
    m_undoRedoService = service;
}

bool ZkUIView::sendSceneMessage(ZkMessage *message)
{
    const ZkUIView *outermost = this;
    while (outermost->m_parentView)
        outermost = outermost->m_parentView;
    ZkPresenter *presenter = outermost->m_viewPresenter;
    return message && presenter && presenter->dispatchMessage(message);
}
