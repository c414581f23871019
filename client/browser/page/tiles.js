// Unpacks the tiles of an update into a picture. The layout of messages and packets is told in BrowserMessage.h and
// BrowserTileCodec.h.

export const TILE = 64;  // pixels, both ways

const LITERAL = 0;
const RUN = 1;
const tile = new Uint32Array(TILE * TILE);

function unpack(words, at, end, width)
{
    let done = 0;
    while (at < end) {
        const head = words[at++];
        const kind = head >>> 30;
        const count = head & 0x3FFFFFFF;
        if (kind === LITERAL) {
            tile.set(words.subarray(at, at + count), done);
            at += count;
        } else if (kind === RUN) {
            tile.fill(words[at++], done, done + count);
        } else {
            // By rows: a copy of more than one would read what it has yet to write.
            for (let copied = 0; copied < count; copied += width) {
                const to = done + copied;
                tile.copyWithin(to, to - width, to - width + Math.min(width, count - copied));
            }
        }
        done += count;
    }
}

// words: the message; picture: width * height pixels. Tells the rectangle that changed.
export function drawTiles(words, picture, width, height)
{
    const columns = Math.ceil(width / TILE);
    const dirty = {left: width, top: height, right: 0, bottom: 0};
    let at = 8;
    for (let i = 0; i < words[7]; ++i) {
        const x = words[at] % columns * TILE;
        const y = Math.floor(words[at] / columns) * TILE;
        const tileWidth = Math.min(TILE, width - x);
        const tileHeight = Math.min(TILE, height - y);
        const end = at + 2 + words[at + 1];
        unpack(words, at + 2, end, tileWidth);
        for (let row = 0; row < tileHeight; ++row)
            picture.set(tile.subarray(row * tileWidth, (row + 1) * tileWidth), (y + row) * width + x);
        at = end;
        dirty.left = Math.min(dirty.left, x);
        dirty.top = Math.min(dirty.top, y);
        dirty.right = Math.max(dirty.right, x + tileWidth);
        dirty.bottom = Math.max(dirty.bottom, y + tileHeight);
    }
    return dirty;
}
