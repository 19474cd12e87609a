#pragma once

class QWidget;

namespace kelvane {

// Twips to pixels at `dotsPerInch` and back (1440 twips to the inch); absurd
// values are held to what a screen coordinate can be.
int TwipsToPixels(double twips, double dotsPerInch);
double PixelsToTwips(int pixels, double dotsPerInch);

// The logical dots per inch of the screen a widget is on; 96 without a screen.
double DotsPerInch(const QWidget* widget);

}  // namespace kelvane
