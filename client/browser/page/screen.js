// One screen: its canvas, what is told below it, and its still.

import {drawTiles} from "./tiles.js";

const TILES = 1;  // the kind of message; the other kind is JPEG

export class Screen
{
    constructor(list)
    {
        const figure = document.getElementById("screen").content.cloneNode(true).querySelector("figure");
        this.figure = figure;
        this.canvas = figure.querySelector("canvas");
        this.context = this.canvas.getContext("2d", {alpha: false});
        this.figures = figure.querySelector(".figures");
        this.times = [];  // when the frames of the last second were drawn
        this.dropped = 0;
        this.turn = Promise.resolve();  // updates are drawn in the order of their arrival
        figure.querySelector(".still").onclick = () => this.still();
        list.append(figure);
    }

    set origin(origin)
    {
        this.told = origin;
        this.number = undefined;
        this.canvas.dataset.source = origin.source;
        this.canvas.dataset.process = origin.process;
        this.figure.querySelector(".name").textContent =
            `${origin.program} (${origin.process}), source ${origin.source}`;
    }

    isOf(origin)
    {
        return this.told.source === origin.source && this.told.process === origin.process;
    }

    remove()
    {
        this.figure.remove();
    }

    draw(words)
    {
        this.turn = this.turn.then(() => this.drawNow(words)).catch(console.error);
        return this.turn;
    }

    async drawNow(words)
    {
        this.resize(words[3], words[4]);
        if (words[0] === TILES)
            this.drawTiles(words);
        else
            await this.drawJpeg(words);
        this.count(words);
    }

    resize(width, height)
    {
        if (this.image && this.image.width === width && this.image.height === height)
            return;
        this.canvas.width = width;
        this.canvas.height = height;
        this.image = this.context.createImageData(width, height);
        this.picture = new Uint32Array(this.image.data.buffer);
    }

    drawTiles(words)
    {
        const dirty = drawTiles(words, this.picture, this.image.width, this.image.height);
        this.context.putImageData(
            this.image, 0, 0, dirty.left, dirty.top, dirty.right - dirty.left, dirty.bottom - dirty.top);
    }

    async drawJpeg(words)
    {
        const bytes = new Uint8Array(words.buffer, 12 * 4, words[7]);
        const bitmap = await createImageBitmap(new Blob([bytes], {type: "image/jpeg"}));
        this.context.drawImage(bitmap, words[8], words[9]);
        bitmap.close();
    }

    count(words)
    {
        if (this.number !== undefined)
            this.dropped += (words[2] - this.number - 1) >>> 0;
        this.number = words[2];
        this.canvas.dataset.number = this.number;
        this.presented = (words[5] + words[6] * 4294967296) / 1000;
        this.drawn = performance.now();
        this.times.push(this.drawn);
    }

    // What stands below the picture. The age is that of the frame when it was drawn, not of a picture that stands still.
    tell(clock)
    {
        if (this.number === undefined)
            return;
        const now = performance.now();
        this.times = this.times.filter((time) => now - time < 1000);
        const {width, height} = this.canvas;
        const age = clock.isSet ? (clock.at(this.drawn) - this.presented).toFixed(1) : "?";
        const shape = width >= height ? "landscape" : "portrait";
        this.figures.textContent = `${width} × ${height} ${shape}, ${this.times.length} frames/s, ` +
            `age ${age} ms, ${this.dropped} dropped`;
    }

    // From the library, without loss, however the picture came here.
    still()
    {
        const link = document.createElement("a");
        link.href = `still/${this.told.id}.png`;
        link.download = `source${this.told.source}-frame${this.number}.png`;
        link.click();
    }
}
