// Estimates the library's clock from questions and answers: half of the quickest round trip is taken for the way back.

const QUESTIONS = 4;      // at the beginning
const AGAIN = 60 * 1000;  // milliseconds; clocks drift

export class Clock
{
    begin(send)
    {
        this.send = send;
        this.best = Infinity;
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
    }

    answer(message)
    {
        const now = performance.now();
        const trip = now - message.asked;
        if (trip <= this.best) {
            this.best = trip;
            this.offset = message.clock / 1000 - (now - trip / 2);
        }
        if (--this.left > 0)
            this.ask();
        else
            this.timer = setTimeout(() => { this.best = Infinity; this.ask(); }, AGAIN);
    }

    // Milliseconds of the library's clock; not a number before the first answer.
    now()
    {
        return performance.now() + this.offset;
    }
}
