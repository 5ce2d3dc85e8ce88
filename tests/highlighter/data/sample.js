import { readFile } from 'node:fs/promises';
export { default as Tide } from "./tide.mjs";

/**
 * Reads gauges and draws them. Heights are centimetres above zero.
 */
const SOURCES = {
    north: 'https://gauges.example/north.json',
    south: "https://gauges.example/south.json?window=24&unit=cm",
};
const LIMITS = [0.5, 12, 1e3, 6.02e23, 0xff, 1_000_000, .75];
let cache = null, pending = undefined;

/* The server's clock may be off,
   so times are taken from the answer. */
export default async function gauges(name, { retries = 3, signal } = {}) {
    if (cache !== null && name in cache) return cache[name];
    for (let attempt = 0; attempt < retries; attempt++) {
        try {
            const answer = await fetch(SOURCES[name], { signal });
            if (!answer.ok) throw new Error(`gauge ${name}: ${answer.status}`);
            const { points } = await answer.json();
            cache = { ...cache, [name]: points.map(([time, height]) => ({ time, height })) };
            return cache[name];
        } catch (error) {
            if (error.name === 'AbortError') throw error;
            console.warn('attempt ' + attempt + " didn't work", error);
        } finally {
            pending = void 0;
        }
    }
    return [];
}

class Chart extends HTMLElement {
    #points = [];
    static observedAttributes = ['name', 'from', "to"];

    constructor() {
        super();
        this.attachShadow({ mode: 'open' });
    }

    set points(value) { this.#points = value; this.draw(); }

    draw() {
        const path = this.#points
            .filter(p => typeof p.height === 'number' && !(p instanceof Date))
            .map((p, i) => `${i ? 'L' : 'M'}${p.time / 60},${-p.height}`)
            .join(' ');
        // A path without points isn't drawn: it would leave a dot at 0,0.
        this.shadowRoot.innerHTML = path && `
            <svg viewBox="0 -200 1440 400">
                <path d="${path}" fill="none" />
            </svg>`;
    }

    attributeChangedCallback(key, before, after) {
        switch (key) {
        case 'name': gauges(after).then(points => { this.points = points; }); break;
        default: if (/^\d+(\.\d+)?$/.test(after) && before != after) this.draw();
        }
    }
}

customElements.define('tide-chart', Chart);
while (false) { const escaped = "a \"quoted\" word and a backslash \\"; }
export const total = LIMITS.reduce((sum, x) => sum + x, 0), naïve = true;
