#include "ombrel/scene/DrawnPicture.h"
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/chart/ChartError.h"
#include "ombrel/chart/Document.h"
#include "ombrel/scene/SceneSetters.h"
#include "ombrel/scene/parts/SceneTexts.h"

namespace ombrel {

DrawnPicture::DrawnPicture(std::string title) { m_form.title = std::move(title); }

void DrawnPicture::Size(int width, int height)
{
    constexpr double kSmallest = 16;
    constexpr double kLargest = 32000;
    CheckedSetting("size", width, kSmallest, kLargest);
    CheckedSetting("size", height, kSmallest, kLargest);
    m_form.size = { width, height };
}

void DrawnPicture::Page(double width, double height)
{
    constexpr double kSmallest = 10;
    constexpr double kLargest = 5000;
    m_form.page
        = { CheckedSetting("page", width, kSmallest, kLargest), CheckedSetting("page", height, kSmallest, kLargest) };
}

void DrawnPicture::LayOut(CDC& dc, CRect const& rect) { LaidOut(dc, CRect(0, 0, rect.Width(), rect.Height())); }

void DrawnPicture::Draw(CDC& dc, CRect const& rect)
{
    LaidOut(dc, CRect(0, 0, rect.Width(), rect.Height())).Draw(&dc, rect, pmDirect);
}

void DrawnPicture::Draw(Picture& picture) { Draw(picture.GetDC(), picture.GetRect()); }

std::string DrawnPicture::Encode(PictureFormat format)
{
    PictureForm form = m_form;
    form.format = format;
    Picture picture(form);
    Draw(picture);
    return picture.Encode();
}

void DrawnPicture::Save(std::string const& path)
{
    if (ExtensionOf(path) == ".ombrel") {
        // A draw gives annotation its place in the graph.
        Picture picture(m_form);
        CRect const rect = picture.GetRect();
        CAnnotatedGraph& graph = LaidOut(picture.GetDC(), rect);
        graph.Draw(&picture.GetDC(), rect, pmDirect);
        SaveDocument(path, graph);
        return;
    }
    auto const format = FormatOfPath(path);
    if (!format)
        throw ChartError(ChartError::Cause::Setting,
            "output: expected the extension .png, .bmp, .pdf, .svg, .ps or .ombrel, found " + path);
    WritePictureFile(path, Encode(*format));
}

} // namespace ombrel
