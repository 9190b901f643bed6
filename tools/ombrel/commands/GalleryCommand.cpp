#include "tools/ombrel/commands/GalleryCommand.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/gallery/Drawing.h"
#include "tools/ombrel/gallery/Page.h"
#include "tools/ombrel/gallery/Sources.h"
#include "tools/ombrel/options/Options.h"

#include <filesystem>

namespace ombrel::host {

namespace {

constexpr int kFilesPerPicture = 7;

void MakeFolder(std::filesystem::path const& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error && !std::filesystem::is_directory(folder, error) && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        throw Failure(kDataFault, folder.string() + ": the folder cannot be made: " + error.message());
}

/// Files in the gallery's folder, counted.
class Folder {
public:
    Folder(std::filesystem::path path, std::size_t files)
        : m_path(std::move(path))
        , m_progress("drawing", files)
    {
    }
    void Write(std::string const& name, std::string const& bytes)
    {
        WritePictureFile((m_path / name).string(), bytes);
        m_progress.Advance(++m_written);
        m_bytes += bytes.size();
    }
    std::size_t Written() const { return m_written; }
    std::size_t Bytes() const { return m_bytes; }

private:
    std::filesystem::path m_path;
    Progress m_progress;
    std::size_t m_written = 0;
    std::size_t m_bytes = 0;
};

void WritePicture(GalleryPicture const& picture, Theme theme, Folder& folder)
{
    constexpr double kMillimetresPerPixel = 25.4 / 96;
    PictureForm form;
    form.page = { kLargePicture.width * kMillimetresPerPixel, kLargePicture.height * kMillimetresPerPixel };
    auto const drawing = MakeGalleryPicture(picture, theme);
    auto const write = [&](std::string const& name, PictureFormat format) {
        form.format = format;
        folder.Write(name, drawing->Encode(form));
    };
    auto const writeBitmaps = [&](std::string const& name, PictureSize size) {
        form.size = size;
        write(name, PictureFormat::Png);
        form.size = { 2 * size.width, 2 * size.height };
        form.scale = 2.0;
        write(DenseName(name), PictureFormat::Png);
        form.scale = 1.0;
    };
    writeBitmaps(LargeName(picture), kLargePicture);
    writeBitmaps(SmallName(picture), kSmallPicture);
    write(SvgName(picture), PictureFormat::Svg);
    write(PdfName(picture), PictureFormat::Pdf);
    folder.Write(ProgramName(picture), ProgramOf(picture, theme));
}

} // namespace

void RunGallery(Options const& options, Messages const& messages)
{
    if (options.files.size() != 1)
        throw Failure(kUsageFault,
            "expected one DIRECTORY for the gallery, found "
                + (options.files.empty() ? std::string("none") : std::to_string(options.files.size())));
    std::filesystem::path const path = options.files.front();
    MakeFolder(path);
    std::vector<GalleryPicture> const pictures = AllGalleryPictures();
    Folder folder(path, pictures.size() * kFilesPerPicture + 2);
    for (GalleryPicture const& picture : pictures)
        WritePicture(picture, options.theme, folder);
    folder.Write(kOverviewName, DrawOverview(pictures, options.theme));
    // Last, so that a page never shows pictures that are not there.
    folder.Write("index.html", MakeGalleryPage(pictures, options.theme));
    messages.Note((path / "index.html").string() + ": written, with " + std::to_string(pictures.size()) + " pictures; "
        + std::to_string(folder.Written()) + " files, " + std::to_string(folder.Bytes() / 1000) + " kB");
}

} // namespace ombrel::host
