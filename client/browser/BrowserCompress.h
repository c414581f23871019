// Screens as pictures in formats that other programs read.
#pragma once

#include "BrowserScreen.h"

/// What a screen showed at one moment. Its tiles are shared and never change: any thread may read it.
struct BrowserSnapshot
{
    explicit BrowserSnapshot(const BrowserScreen& screen) : m_Grid(screen.Grid()), m_Tiles(screen.Tiles()) {}

    BrowserTileGrid m_Grid;
    std::vector<BrowserScreen::Tile> m_Tiles;
};

using BrowserBytes = std::vector<uint8_t>;

/// The whole screen, without loss. Empty if memory is not to be had.
BrowserBytes BrowserPng(const BrowserSnapshot& snapshot);

/// A part of the screen, made of whole tiles, with the loss that the format has. Empty if memory is not to be had.
BrowserBytes BrowserJpeg(const BrowserSnapshot& snapshot, const BrowserRect& rect);
