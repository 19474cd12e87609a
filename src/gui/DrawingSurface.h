#pragma once

#include <QString>
#include <QtGlobal>

namespace kelvane {

// Where a drawing ends up and how a text is measured: a persistent picture
// with a font, a text colour and a current point, in the surface's own units.
// Colours are red + green * 256 + blue * 65536.
class DrawingSurface {
  public:
    enum class LineEnd { NewLine, StayOnLine };

    virtual ~DrawingSurface() = default;

    // Fills the picture with the background colour and moves the current point to (0, 0).
    virtual void Clear() = 0;
    // The colour of the picture at a point; the background colour outside it.
    virtual qint32 ColourAt(double x, double y) const = 0;

    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;

    // The size of one line of text in the current font.
    virtual double TextWidth(const QString& text) const = 0;
    virtual double TextHeight(const QString& text) const = 0;

    virtual double CurrentX() const = 0;
    virtual double CurrentY() const = 0;
    virtual void SetCurrentX(double x) = 0;
    virtual void SetCurrentY(double y) = 0;

    // Prints with the text's top left at the current point. NewLine then moves
    // the point to the start of the next line; StayOnLine moves it past the text.
    virtual void Print(const QString& text, LineEnd end) = 0;

    // A one-unit line between two points.
    virtual void DrawLine(double x1, double y1, double x2, double y2, qint32 colour) = 0;
    // A box filled in one colour, both corners included.
    virtual void FillBox(double x1, double y1, double x2, double y2, qint32 colour) = 0;

    virtual void SetTextColour(qint32 colour) = 0;
    // The desktop's colour for text on windows, which the text colour starts as.
    virtual qint32 WindowTextColour() const = 0;

    virtual QString FontName() const = 0;
    virtual double FontSize() const = 0;
    virtual void SetFontName(const QString& name) = 0;
    virtual void SetFontSize(double points) = 0;
    virtual void SetFontBold(bool bold) = 0;
    virtual void SetFontItalic(bool italic) = 0;
    virtual void SetFontUnderline(bool underline) = 0;

    // Called when a whole drawing is done, so its watchers can look at it.
    virtual void DrawingDone() {}

    // The picture as the bytes of a bitmap file. False, with the reason in
    // `error`, when it cannot be made (a picture of no size, say).
    virtual bool EncodePicture(QByteArray& bitmap, QString& error) const = 0;
};

}  // namespace kelvane
