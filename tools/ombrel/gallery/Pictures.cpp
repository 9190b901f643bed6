#include "tools/ombrel/gallery/Pictures.h"

namespace ombrel::host {

std::vector<GalleryPicture> AllGalleryPictures()
{
    std::vector<GalleryPicture> all;
    for (auto const& family : { LinePictures(), BarPictures(), AreaPictures(), ContourPictures(), SurfacePictures(),
             SceneBarPictures(), ScenePointPictures(), MeshPictures(), AxesPictures(), StylePictures() })
        all.insert(all.end(), family.begin(), family.end());
    return all;
}

} // namespace ombrel::host
