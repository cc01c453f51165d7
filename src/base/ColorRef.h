#pragma once
// Colours are kept as the Windows colour reference until they are painted:
// 0x00BBGGRR for a plain colour, a negative value (0xFF0000nn) for system
// colour number nn. Only the painter turns them into screen colours.

#include <cstdint>

namespace zorfa {

using TColor = std::int32_t;

constexpr TColor rgbColor(std::uint8_t r, std::uint8_t g, std::uint8_t b) noexcept {
    return static_cast<TColor>(r | (g << 8) | (static_cast<std::uint32_t>(b) << 16));
}
constexpr std::uint8_t redOf(TColor c) noexcept { return static_cast<std::uint8_t>(c & 0xFF); }
constexpr std::uint8_t greenOf(TColor c) noexcept { return static_cast<std::uint8_t>((c >> 8) & 0xFF); }
constexpr std::uint8_t blueOf(TColor c) noexcept { return static_cast<std::uint8_t>((c >> 16) & 0xFF); }

constexpr bool isSystemColor(TColor c) noexcept { return c < 0; }
constexpr int systemColorIndex(TColor c) noexcept { return c & 0xFF; }
constexpr TColor systemColor(int index) noexcept {
    return static_cast<TColor>(0xFF000000u | static_cast<std::uint32_t>(index & 0xFF));
}

// The named colours the system uses by name.
constexpr TColor clBlack = 0x000000;
constexpr TColor clMaroon = 0x000080;
constexpr TColor clGreen = 0x008000;
constexpr TColor clOlive = 0x008080;
constexpr TColor clNavy = 0x800000;
constexpr TColor clPurple = 0x800080;
constexpr TColor clTeal = 0x808000;
constexpr TColor clGray = 0x808080;
constexpr TColor clSilver = 0xC0C0C0;
constexpr TColor clRed = 0x0000FF;
constexpr TColor clLime = 0x00FF00;
constexpr TColor clYellow = 0x00FFFF;
constexpr TColor clBlue = 0xFF0000;
constexpr TColor clFuchsia = 0xFF00FF;
constexpr TColor clAqua = 0xFFFF00;
constexpr TColor clWhite = 0xFFFFFF;
constexpr TColor clNone = 0x1FFFFFFF;
constexpr TColor clDefault = 0x20000000;

// System colours, by their Windows numbers.
constexpr TColor clScrollBar = systemColor(0);
constexpr TColor clBackground = systemColor(1);
constexpr TColor clActiveCaption = systemColor(2);
constexpr TColor clWindow = systemColor(5);
constexpr TColor clWindowText = systemColor(8);
constexpr TColor clHighlight = systemColor(13);
constexpr TColor clHighlightText = systemColor(14);
constexpr TColor clBtnFace = systemColor(15);
constexpr TColor clBtnShadow = systemColor(16);
constexpr TColor clGrayText = systemColor(17);
constexpr TColor clBtnText = systemColor(18);
constexpr TColor clInfoText = systemColor(23);
constexpr TColor clInfoBk = systemColor(24);

}  // namespace zorfa
