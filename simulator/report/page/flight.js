// What the page knows of a flight, and how it writes numbers.
const deg = 180 / Math.PI;

// Okabe and Ito's colours, which the colour-blind tell apart.
const colour = {
    x: '#d55e00', y: '#009e73', z: '#0072b2', u: '#e69f00', v: '#cc79a7', w: '#56b4e9', black: '#000000', yellow: '#f0e442',
};

class Flight {
    constructor(data) {
        Object.assign(this, data);
        this.events.sort((a, b) => a.time_s - b.time_s);
        if (this.live) // what is not there yet may come
            for (const {curves} of plotKinds)
                for (const {column} of curves)
                    this.curves[column] = this.curves[column] || this.time_s.map(() => null);
    }

    get start() { return this.time_s.length ? this.time_s[0] : 0; }
    get end() { return this.time_s.length ? this.time_s[this.time_s.length - 1] : 0; }

    // The last row that begins no later than the time.
    row(time) {
        return lastBefore(time, this.time_s.length, (i) => this.time_s[i]);
    }

    at(name, time) {
        const curve = this.curves[name];
        return curve && curve.length ? curve[this.row(time)] : null;
    }

    // Number by number between the two rows around the time; rows of `width` numbers, the first of which is the time.
    between(rows, width, time) {
        const count = rows.length / width;
        const i = Math.min(lastBefore(time, count, (k) => rows[k * width]), count - 2);
        if (count < 2)
            return {before: rows.slice(1, width), after: rows.slice(1, width), part: 0};
        const [t0, t1] = [rows[i * width], rows[(i + 1) * width]];
        return {
            before: rows.slice(i * width + 1, (i + 1) * width),
            after: rows.slice((i + 1) * width + 1, (i + 2) * width),
            part: Math.min(Math.max((time - t0) / (t1 - t0), 0), 1),
        };
    }

    attitude(time) {
        return this.between(this.attitudes, 5, time);
    }

    // Position in km and velocity in km/s, field in T and direction to the sun, all inertial.
    place(time) {
        const {before, after, part} = this.between(this.places, 13, time);
        const all = before.map((value, i) => value + part * (after[i] - value));
        return {position: all.slice(0, 3), velocity: all.slice(3, 6), field: all.slice(6, 9), sun: all.slice(9, 12)};
    }

    inShadow(time) {
        return this.shadows.some(([from, until]) => time >= from && time <= until);
    }

    get modes() {
        return (this.summary.visits || []);
    }

    modeAt(time) {
        const now = this.modes.filter((visit) => visit.from_s <= time).pop();
        return now ? now.name : '';
    }
}

function lastBefore(time, count, timeOf) {
    let low = 0, high = count - 1;
    while (low < high) {
        const middle = Math.ceil((low + high) / 2);
        if (timeOf(middle) <= time)
            low = middle;
        else
            high = middle - 1;
    }
    return low;
}

const pad = (number) => String(number).padStart(2, '0');

// 3725 -> "1:02:05"
function clock(seconds) {
    const whole = Math.floor(Math.abs(seconds) + 1e-6);
    return (seconds < 0 ? '-' : '') + `${Math.floor(whole / 3600)}:${pad(Math.floor(whole / 60) % 60)}:${pad(whole % 60)}`;
}

// In the unit that people would say.
function duration(seconds) {
    if (seconds == null)
        return '–';
    if (seconds < 120)
        return `${+seconds.toFixed(1)} s`;
    if (seconds < 7200)
        return `${+(seconds / 60).toFixed(1)} min`;
    return `${+(seconds / 3600).toFixed(2)} h`;
}

function number(value, unit = '', digits = 3) {
    if (value == null || !isFinite(value))
        return '–';
    const size = Math.abs(value);
    const text = value === 0 ? '0' : size >= 1e5 || size < 1e-3 ? value.toExponential(digits - 1).replace(/\.?0+e/, 'e')
        : String(+value.toPrecision(digits));
    return unit ? `${text} ${unit}` : text;
}

const angle = (rad) => rad == null ? '–' : number(rad * deg) + '°';

function utc(msec) {
    return new Date(msec).toISOString().replace('T', ' ').slice(0, 19) + ' UTC';
}

// Text is text, whatever is in it.
function element(name, attributes = {}, ...children) {
    const made = document.createElement(name);
    for (const [key, value] of Object.entries(attributes))
        made.setAttribute(key, value);
    made.append(...children);
    return made;
}
