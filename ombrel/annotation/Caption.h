#pragma once
#include "ombrel/annotation/Annotation.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A block of text, of one line or several, that floats over a graph.
///
/// Every setter raises the modified flag. Lifetime: owned by the caption array.
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CCaption : public CAnnotation {
public:
    /// Stored only: what the host uses the caption for. Captions that a graph adds are ctGeneral.
    enum TitleType : int { ctNone = 0, ctGeneral = 1 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    CCaption();
    CCaption(CGraph* graph, CString const& text, TitleType type);
    void Serialize(CArchive& ar) override;
    /// Follows the graph's size and draws; without text it does nothing. Lines outside the context's clip are left out.
    void Draw(CPort* port) override;
    using CGraphComponent::Draw;
    CSize Measure(CDC* dc) override;

    using CAnnotation::Create;
    /// Switches the caption on, with its corner at fractions of the graph's reference rectangle (in 2D graphs that of
    /// the axes): (0.5, 0.5) is its centre.
    void Create(CRealPoint const& normalisedPosition);
    void SetRect(CRect const& rect) override;
    void SetOn(int on) { Change(m_on, on); }
    CString GetText() const { return m_text; }
    /// Lines end with a line feed, with or without a carriage return.
    void SetText(CString const& text) { Change(m_text, text); }
    TitleType GetTitleType() const { return m_titleType; }
    /// Whether the graph shows through behind the text.
    int GetTransparentBkgnd() const { return m_transparentBackground; }
    void SetTransparentBkgnd(int transparent) { Change(m_transparentBackground, transparent); }

protected:
    /// The steps of a draw that a host's own class may override, besides those of CAnnotation.

    /// Splits the text into the lines to be drawn; returns their number.
    virtual int MakeLines();
    /// The index of the widest line in the context's font, the first of equals; −1 without lines.
    virtual int GetLongestLine(CDC* dc);
    /// Makes the lines and measures them with the caption's font, on the context of the draw in progress.
    virtual void SetTextRect();
    /// Font height, lines, the rectangle's size and the fractions of a caption that is drawn for the first time.
    virtual void SetInitialSize(CDC* dc);

private:
    /// The lines as they come out in the caption's font; pixels.
    struct TextBlock {
        int lineHeight = 0;
        CSize size;
        /// On all sides.
        int margin = 0;
    };
    /// To the size that the lines have by now.
    void SetSizeOfText();
    void DrawLines(CDC& dc) const;

    int m_transparentBackground = 0;
    CString m_text;
    TitleType m_titleType = ctNone;
    CStringArray m_lines;
    TextBlock m_block;
};

/// The lines of a caption's text: cut at line feeds, without carriage returns and without empty lines at the end.
///
/// A line of more than 255 UTF-16 units goes on in further lines, cut after its last blank where it has one, and never
/// inside a surrogate pair.
OMBREL_EXPORT CStringArray SplitCaptionLines(CString const& text);

} // namespace ombrel
