#include "ombrel/colour/Annotation.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/Coordinates.h"

namespace ombrel {

void CAnnotation::Create(CPoint at)
{
    m_on = 1;
    m_positioned = 0;
    m_created = 1;
    SetRect(CRect(at, CSize()));
}

void CAnnotation::SetRect(CRect const& rect)
{
    m_rect = rect;
    m_rectSet = 1;
}

void CAnnotation::Reset()
{
    m_created = 0;
    m_on = 0;
    m_positioned = 0;
    m_rectSet = 0;
}

void CAnnotation::SerializeRect(ArchiveFields& fields)
{
    fields.Rect(m_rect);
    if (fields.GetArchive().IsLoading())
        m_rect = ClampRect(m_rect);
}

} // namespace ombrel
