#include "tools/ombrel/gallery/Pictures.h"

#include <algorithm>

namespace ombrel::host {

std::vector<GalleryPicture> AllGalleryPictures()
{
    std::vector<GalleryPicture> all;
    for (auto const& family : { ChartPictures(), GraphPictures(), ScenePictures(), SolidPictures() }) {
        for (GalleryPicture const& picture : family) {
            auto const isSameSection = [&](GalleryPicture const& other) { return other.section == picture.section; };
            auto const last = std::find_if(all.rbegin(), all.rend(), isSameSection);
            all.insert(last == all.rend() ? all.end() : last.base(), picture);
        }
    }
    return all;
}

} // namespace ombrel::host
