// What the width of a window means in codons.
#pragma once

namespace velto {

// Codons of a window.
constexpr int windowCodons(int windowWidth) { return windowWidth / 3; }

// Codons before the centre codon of a window: window k of a frame is centred on step k + half.
constexpr int halfWindow(int windowWidth) { return windowWidth / 6; }

// Length in bases that the vote takes a window for: from its first base to its last.
constexpr int votedLength(int windowWidth) { return 3 * windowCodons(windowWidth) - 1; }

}  // namespace velto
