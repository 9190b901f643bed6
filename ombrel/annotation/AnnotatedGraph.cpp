#include "ombrel/annotation/AnnotatedGraph.h"

namespace ombrel {

CCaptionArray* CAnnotatedGraph::GetCaptionArray() const { return m_captionArray; }

CColourKeyArray* CAnnotatedGraph::GetColourKeyArray() const { return m_colourKeyArray; }

CLegend* CAnnotatedGraph::GetLegend() const { return m_legend; }

CCaption* CAnnotatedGraph::AddCaption(CPoint at)
{
    if (!m_captionArray)
        return nullptr;
    auto* const caption = new CCaption(this, "Caption Text", CCaption::ctGeneral);
    m_captionArray->Add(caption);
    caption->SetTag(GetNewTag());
    caption->Create(at);
    return caption;
}

void CAnnotatedGraph::ClearCaptions()
{
    if (m_captionArray)
        m_captionArray->Clear();
    SetModifiedFlag(1);
}

void CAnnotatedGraph::CreateLegend()
{
    if (!m_legend)
        AddComponent(m_legend = new CLegend(this));
}

void CAnnotatedGraph::CreateColourKeyArray()
{
    if (!m_colourKeyArray)
        AddComponent(m_colourKeyArray = new CColourKeyArray(this));
}

void CAnnotatedGraph::CreateCaptionArray()
{
    if (!m_captionArray)
        AddComponent(m_captionArray = new CCaptionArray(this));
}

CColourKey* CAnnotatedGraph::AddColourKey(CPoint at, unsigned long curveTag)
{
    if (!m_colourKeyArray)
        return nullptr;
    auto* const key = new CColourKey(this, GetComponentByTag(curveTag));
    m_colourKeyArray->Add(key);
    key->SetTag(GetNewTag());
    key->Create(at);
    return key;
}

void CAnnotatedGraph::ClearComponents()
{
    m_captionArray = nullptr;
    m_colourKeyArray = nullptr;
    m_legend = nullptr;
    CGraph::ClearComponents();
}

void CAnnotatedGraph::FindComponents()
{
    CGraph::FindComponents();
    m_captionArray = nullptr;
    m_colourKeyArray = nullptr;
    m_legend = nullptr;
    for (CGraphComponent* component : GetComponentArray()) {
        if (auto* const captions = DynamicDowncast<CCaptionArray>(component))
            m_captionArray = captions;
        else if (auto* const keys = DynamicDowncast<CColourKeyArray>(component))
            m_colourKeyArray = keys;
        else if (auto* const legend = DynamicDowncast<CLegend>(component))
            m_legend = legend;
    }
}

bool CAnnotatedGraph::IsAnnotation(CGraphComponent const* component) const
{
    return component && (component == m_captionArray || component == m_colourKeyArray || component == m_legend);
}

} // namespace ombrel
