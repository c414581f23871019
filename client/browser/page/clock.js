// Estimates the library's clock from questions and answers: half of the quickest round trip is taken for the way back.
// An answer that does not come tells that the other side is gone, which a connection may hide for long.

const QUESTIONS = 4;  // in a row, at the beginning
const PAUSE = 5000;   // milliseconds between the others
const KEPT = 12;      // round trips that the quickest is chosen of; clocks drift
const PATIENCE = 10000;

export class Clock
{
    // send: sends a text. lost: called when no answer comes.
    begin(send, lost)
    {
        this.send = send;
        this.lost = lost;
        this.trips = [];
        this.left = QUESTIONS;
        this.ask();
    }

    end()
    {
        clearTimeout(this.timer);
    }

    ask()
    {
        this.send(JSON.stringify({clock: performance.now()}));
        this.timer = setTimeout(() => this.lost(), PATIENCE);
    }

    answer(message)
    {
        clearTimeout(this.timer);
        const now = performance.now();
        const time = now - message.asked;
        this.trips.push({time, offset: message.clock / 1000 - (now - time / 2)});
        if (this.trips.length > KEPT)
            this.trips.shift();
        this.offset = this.trips.reduce((best, trip) => trip.time < best.time ? trip : best).offset;
        this.timer = setTimeout(() => this.ask(), --this.left > 0 ? 0 : PAUSE);
    }

    // Whether an answer came.
    get isSet()
    {
        return this.offset !== undefined;
    }

    // A time of performance.now() as the library's, in milliseconds.
    at(time)
    {
        return time + this.offset;
    }
}
