// Keeps a connection to the library and shows every screen that it tells of.

import {Screen} from "./screen.js";
import {Clock} from "./clock.js";

const RETRY = 250;  // milliseconds

const screens = new Map();
const clock = new Clock();
const list = document.getElementById("screens");
const state = document.getElementById("state");
const jpeg = document.getElementById("jpeg");

function connect()
{
    const address = new URL("watch", location.href);
    address.protocol = "ws:";
    const socket = new WebSocket(address);
    jpeg.onchange = () => socket.readyState === WebSocket.OPEN && socket.send(JSON.stringify({jpeg: jpeg.checked}));
    socket.binaryType = "arraybuffer";
    socket.onopen = () => {
        show("connected");
        socket.send(JSON.stringify({jpeg: jpeg.checked}));
        clock.begin((text) => socket.send(text), again);
    };
    socket.onmessage = (event) => {
        if (typeof event.data === "string")
            onText(JSON.parse(event.data));
        else
            onUpdate(socket, new Uint32Array(event.data));
    };
    socket.onclose = again;

    function again()
    {
        socket.onclose = socket.onmessage = null;
        socket.close();
        clock.end();
        show("connection lost, trying again");
        setTimeout(connect, RETRY);
    }
}

function onText(message)
{
    if ("clock" in message)
        clock.answer(message);
    if ("screens" in message)
        onScreens(message.screens);
}

// A server that took over numbers its screens anew: one goes on where program and source are the same.
function onScreens(told)
{
    const before = [...screens.values()];
    screens.clear();
    for (const origin of told) {
        const at = before.findIndex((screen) => screen.isOf(origin));
        const screen = at < 0 ? new Screen(list) : before.splice(at, 1)[0];
        screen.origin = origin;
        screens.set(origin.id, screen);
    }
    before.forEach((screen) => screen.remove());
}

async function onUpdate(socket, words)
{
    const screen = screens.get(words[1]);
    if (screen)
        await screen.draw(words);
    if (socket.readyState === WebSocket.OPEN)
        socket.send(JSON.stringify({drawn: words[1]}));
}

function show(text)
{
    state.textContent = text;
}

function wholeScreen()
{
    if (document.fullscreenElement)
        document.exitFullscreen();
    else
        list.querySelector("figure:hover, figure")?.requestFullscreen();
}

document.addEventListener("keydown", (event) => {
    if (event.key.toLowerCase() === "f" && !event.ctrlKey && !event.metaKey && !event.altKey)
        wholeScreen();
});
list.addEventListener("dblclick", wholeScreen);
setInterval(() => screens.forEach((screen) => screen.tell(clock)), 500);
connect();
