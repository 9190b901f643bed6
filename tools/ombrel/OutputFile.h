#pragma once
#include "ombrel/platform/framework/Geometry.h"
#include "tools/ombrel/options/Options.h"

#include <memory>
#include <string>

namespace ombrel {
class CAnnotatedGraph;
class CDC;
class CDIB;
class PageSurface;
} // namespace ombrel

namespace ombrel::host {

class Messages;

/// What is to be drawn on, and where it is to be written.
struct Target {
    /// Empty for standard output.
    std::string path;
    PictureFormat format = PictureFormat::Png;
    PictureSize size;
    PageSize page;
    std::string title;

    bool IsPage() const { return format != PictureFormat::Png && format != PictureFormat::Bmp; }
};

/// The target that the options ask for, with the input's name for one that is not named. Throws Failure with
/// kUsageFault.
Target MakeTarget(Options const& options, std::string const& input);

/// Throws Failure with kUsageFault when the picture or the document would be written over an input or each other.
void CheckPaths(Options const& options, Target const& target);

/// A bitmap or page of a target's size, to draw one graph on.
class Picture {
public:
    /// Throws CResourceException* when there is no memory.
    explicit Picture(Target const& target);
    ~Picture();
    CDC& GetDC();
    CRect GetRect() const { return m_rect; }
    /// The bytes of the file. Nothing may be drawn after it.
    std::string Encode();

private:
    Target const& m_target;
    CRect m_rect;
    std::unique_ptr<CDIB> m_bitmap;
    /// Owned by the device context.
    PageSurface* m_page = nullptr;
    std::unique_ptr<CDC> m_pageDC;
};

/// Draws the graph into the whole of the picture.
void DrawGraph(CAnnotatedGraph& graph, Picture& picture);

/// Writes beside the target and renames, or to standard output. Throws Failure with kDataFault.
void WriteTarget(Target const& target, std::string const& bytes, Messages const& messages);

/// Likewise to a file.
void WriteFile(std::string const& path, std::string const& bytes);

/// True when both name the same existing file.
bool IsSameFile(std::string const& a, std::string const& b);

} // namespace ombrel::host
