#pragma once
#include "ombrel/platform/gdi/text/TextRendering.h"

#include <unordered_map>

namespace ombrel::text {

/// Widths of texts that Pango laid out, which are slow to find.
class ShapedWidths {
public:
    int Find(TextShaper& shaper, std::shared_ptr<LogicalFont> const& font, std::u16string_view text);

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view> {}(text); }
    };
    using Widths = std::unordered_map<std::u16string, int, Hash, std::equal_to<>>;
    std::unordered_map<std::shared_ptr<LogicalFont>, Widths> m_fonts;
    std::size_t m_count = 0;
};

/// Masks of whole texts, as many as memory of a sensible size holds.
class MaskCache {
public:
    /// The font is the one that the LOGFONT stands for.
    std::shared_ptr<TextMask const> Find(TextShaper& shaper, std::shared_ptr<LogicalFont> const& logical,
        LOGFONT const& font, std::u16string_view text, CRect const& visible);

private:
    struct Key {
        LogicalFont const* font;
        unsigned look;
        std::u16string text;
        bool operator==(Key const&) const = default;
    };
    struct Hash {
        std::size_t operator()(Key const& key) const
        {
            return std::hash<std::u16string> {}(key.text)
                ^ (std::hash<LogicalFont const*> {}(key.font) * 31 + key.look);
        }
    };
    struct Entry {
        // Keeps the key's pointer from being given to another font.
        std::shared_ptr<LogicalFont const> font;
        std::shared_ptr<TextMask const> mask;
    };
    std::unordered_map<Key, Entry, Hash> m_masks;
    std::size_t m_bytes = 0;
};

/// All that is kept of fonts and texts: opened files, fonts, widths, masks.
///
/// Every thread has an engine of its own, which ends with the thread. One engine behind a lock would make threads that
/// draw graphs wait for each other at every label, while FreeType's faces and Pango's font maps are made for one thread
/// anyway; and a graph is drawn by one thread, so that few masks would be shared. The price is 130 kB a thread and a
/// third of a millisecond for its first labels, 330 kB and 2.5 ms once a text needs shaping. The configuration of
/// Fontconfig, the greatest part, is the process's.
class TextEngine {
public:
    /// The calling thread's own.
    static TextEngine& OfThread();

    /// The font that a LOGFONT stands for; the reference stays good until the next call.
    std::shared_ptr<LogicalFont> const& FindFont(LOGFONT const& font);
    CSize Measure(LOGFONT const& font, std::u16string_view text);
    ShapedText Shape(LogicalFont& font, std::u16string_view text) { return m_shaper.Shape(font, text); }
    std::u32string TakeMissing() { return m_shaper.TakeMissing(); }
    std::shared_ptr<TextMask const> Render(LOGFONT const& font, std::u16string_view text, CRect const& visible);

private:
    OpenFaces m_faces;
    std::vector<std::shared_ptr<LogicalFont>> m_fonts;
    std::size_t m_lastFont = 0;
    TextShaper m_shaper { m_faces };
    ShapedWidths m_widths;
    MaskCache m_masks;
};

// What the surfaces ask the thread's engine for.

/// The font that a LOGFONT stands for, for use by this thread.
std::shared_ptr<LogicalFont> FindFont(LOGFONT const& font);
/// Places the glyphs of a text.
ShapedText Shape(LogicalFont& font, std::u16string_view text);
/// The mask of a text; cached per font and text. Of a large text it may be only the part that lies in the visible
/// rectangle, relative to the reference point: what cannot be seen costs no time and no memory.
std::shared_ptr<TextMask const> RenderText(
    LOGFONT const& font, CString const& text, CRect const& visible = kTextLimits);

} // namespace ombrel::text
