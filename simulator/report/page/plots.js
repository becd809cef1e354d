// Curves over time that are zoomed together, and a line with light, modes and events above them.
const axes = ['x', 'y', 'z'];
const labelWidth = 62;
const shadowColour = '#dcdfe6';

const vectorCurves = (name, scale) => axes.map((axis) => ({
    label: axis, column: name.replace('*', axis), scale, colour: colour[axis],
}));
const dashed = (curves, note) => curves.map((curve) => ({
    ...curve, label: `${curve.label} ${note}`, pattern: [6, 3], width: 1,
}));

const plotKinds = [
    {title: 'Body rates (°/s)', id: 'rates', curves: [
        {label: 'total', column: 'angular_velocity_radps', scale: deg, colour: colour.black, width: 1},
        ...vectorCurves('angular_velocity_*_radps', deg),
        ...dashed(vectorCurves('estimated_angular_velocity_*_radps', deg), 'est.')]},
    {title: 'Errors (°)', id: 'errors', log: true,
     none: 'The unit had no estimate of its attitude and pointed at nothing.', curves: [
        {label: 'pointing error', column: 'pointing_error_rad', scale: deg, colour: colour.x},
        {label: 'estimate against truth', column: 'estimation_error_rad', scale: deg, colour: colour.z}]},
    {title: 'Attitude', id: 'attitude', curves: [
        ...[1, 2, 3, 4].map((i) => ({label: `q${i}`, column: `q_${i}`, scale: 1, colour: colour['xyzv'[i - 1]]})),
        ...dashed([1, 2, 3, 4].map((i) => ({label: `q${i}`, column: `estimated_q_${i}`, scale: 1,
                                            colour: colour['xyzv'[i - 1]]})), 'est.')]},
    {title: 'Wheel speeds (rad/s)', id: 'wheels', none: 'No wheel turned.', skipZero: true,
     curves: ['x', 'y', 'z', 'u', 'v', 'w'].map((axis) => ({
        label: axis, column: `wheel_speed_${axis}_radps`, scale: 1, colour: colour[axis]}))},
    {title: 'Dipole moments (A m²)', id: 'dipoles', none: 'The magnetorquers were off.', skipZero: true,
     curves: vectorCurves('dipole_moment_*_am2', 1)},
    {title: 'Magnetic field, body (µT)', id: 'field', curves: vectorCurves('magnetic_field_*_t', 1e6)},
    {title: 'Direction to the sun, body', id: 'sun', curves: vectorCurves('sun_vector_*', 1)},
];

class Plots {
    // Calls `seek` with the time that somebody clicks at.
    constructor(flight, seek) {
        this.flight = flight;
        this.seek = seek;
        this.graphs = [];
        this.cursors = [];
        this.time = flight.start;
        this.end = flight.end;
        const room = document.getElementById('plots');
        for (const kind of plotKinds)
            this.add(room, kind);
        this.timeline = new Timeline(document.getElementById('timeline'), flight, seek);
        this.zoomed();
        window.addEventListener('resize', () => requestAnimationFrame(() => this.zoomed()));
    }

    curvesOf(kind) {
        const {curves} = this.flight;
        return kind.curves.filter(({column}) => curves[column] &&
            (this.flight.live || !(kind.skipZero && curves[column].every((v) => v === 0))));
    }

    rowsOf(kind, shown) {
        const shape = kind.log ? (value) => Math.log10(Math.max(value, 1e-6)) : (value) => value;
        const columns = shown.map(({column, scale}) =>
            this.flight.curves[column].map((value) => value === null ? null : shape(value * scale)));
        return this.flight.time_s.map((time, i) => [time, ...columns.map((column) => column[i])]);
    }

    add(room, kind) {
        const legend = element('div', {class: 'legend'});
        const chart = element('div', {class: 'chart'});
        const plot = element('div', {class: 'plot', id: `plot-${kind.id}`},
            element('div', {class: 'plot-head'}, element('h3', {}, kind.title), legend), chart);
        const shown = this.curvesOf(kind);
        room.append(plot);
        if (!shown.length) {
            chart.replaceWith(element('div', {class: 'none'}, kind.none || 'Nothing is known.'));
            return;
        }
        const written = (value) => number(kind.log ? 10 ** value : value, '', 4);
        const series = {};
        for (const curve of shown)
            series[curve.label] = {
                color: curve.colour, strokeWidth: curve.width || 1.3, ...(curve.pattern ? {strokePattern: curve.pattern} : {}),
            };
        const graph = new Dygraph(chart, this.rowsOf(kind, shown), {
            labels: ['time', ...shown.map(({label}) => label)],
            series,
            labelsDiv: legend,
            legend: 'always',
            axes: {
                x: {ticker: clockTicks, axisLabelFormatter: clock, valueFormatter: clock, axisLabelWidth: 70},
                y: {pixelsPerLabel: 18, axisLabelWidth: labelWidth - 6, valueFormatter: written,
                    axisLabelFormatter: written, ...(kind.log ? {ticker: powerTicks} : {})},
            },
            gridLineColor: '#e4e7ec',
            axisLineColor: '#9aa2ae',
            highlightCircleSize: 3,
            animatedZooms: false,
            underlayCallback: (canvas, area, g) => this.shade(canvas, area, g),
            drawCallback: (g, first) => first || this.zoomed(g),
            highlightCallback: (event, x, points, row) => this.select(graph, row),
            unhighlightCallback: () => this.graphs.forEach((other) => other === graph || other.clearSelection()),
            clickCallback: (event, x) => this.seek(x),
        });
        graph.kind = kind;
        graph.shown = shown;
        this.graphs.push(graph);
        const cursor = element('div', {class: 'cursor'});
        chart.append(cursor);
        this.cursors.push(cursor);
    }

    shade(canvas, area, g) {
        canvas.fillStyle = shadowColour;
        for (const [from, until] of this.flight.shadows)
            fillBetween(canvas, area, g, from, until, area.y, area.h);
        canvas.fillStyle = '#6b7280';
        for (const visit of this.flight.modes.slice(1))
            canvas.fillRect(Math.round(g.toDomXCoord(visit.from_s)), area.y, 1, area.h);
    }

    select(graph, row) {
        for (const other of this.graphs)
            if (other !== graph)
                other.setSelection(row);
    }

    // All plots show what one of them shows.
    zoomed(source = this.graphs[0]) {
        if (this.busy || !source)
            return;
        this.busy = true;
        const dateWindow = source.xAxisRange();
        for (const graph of this.graphs)
            if (graph !== source)
                graph.updateOptions({dateWindow});
        this.busy = false;
        if (this.timeline) {
            this.timeline.draw(dateWindow, source.getArea());
            this.show(this.time);
        }
    }

    // The flight has gone on. Where its end was to be seen it stays to be seen.
    update() {
        const [from, until] = this.graphs[0].xAxisRange();
        const follows = until >= this.end;
        this.end = this.flight.end;
        const dateWindow = [from, follows ? this.end : until];
        this.busy = true;
        for (const graph of this.graphs)
            graph.updateOptions({file: this.rowsOf(graph.kind, graph.shown), dateWindow});
        this.busy = false;
        this.zoomed();
    }

    // Moves the line that says where the picture is.
    show(time) {
        this.time = time;
        this.graphs.forEach((graph, i) => {
            const area = graph.getArea();
            place(this.cursors[i], graph.toDomXCoord(time), area, area.y, area.h);
        });
        this.timeline.show(time);
    }
}

// A coordinate's line, where it is inside of the plot.
function place(cursor, x, area, top, height) {
    cursor.style.display = x >= area.x && x <= area.x + area.w ? '' : 'none';
    cursor.style.left = `${x}px`;
    cursor.style.top = `${top}px`;
    cursor.style.height = `${height}px`;
}

function fillBetween(canvas, area, g, from, until, top, height) {
    const left = Math.max(g.toDomXCoord(from), area.x);
    const right = Math.min(g.toDomXCoord(until), area.x + area.w);
    if (right > left)
        canvas.fillRect(left, top, right - left, height);
}

// Times that people read: whole seconds, minutes, hours.
function clockTicks(from, until, pixels) {
    const steps = [1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200, 86400];
    const wanted = (until - from) / Math.max(pixels / 90, 1);
    const step = steps.find((each) => each >= wanted) || 86400 * Math.ceil(wanted / 86400);
    const ticks = [];
    for (let t = Math.ceil(from / step) * step; t <= until; t += step)
        ticks.push({v: t, label: clock(t)});
    return ticks;
}

// Powers of ten for values that are their logarithms: dygraphs' own logarithmic scale cannot be empty.
function powerTicks(from, until) {
    const step = Math.max(Math.ceil((until - from) / 5), until - from < 2 ? 0.25 : 1);
    const ticks = [];
    for (let power = Math.ceil(from / step) * step; power <= until; power += step)
        ticks.push({v: power, label: number(10 ** power, '', 2)});
    return ticks;
}

// Light, modes and events as a strip of three lines.
class Timeline {
    constructor(room, flight, seek) {
        this.flight = flight;
        this.canvas = element('canvas');
        this.cursor = element('div', {class: 'cursor'});
        room.append(this.canvas, this.cursor);
        this.canvas.addEventListener('mousemove', (event) => this.hover(event));
        this.canvas.addEventListener('click', (event) => seek(this.timeAt(event.offsetX)));
    }

    toDomXCoord(time) {
        const [from, until] = this.range;
        return this.area.x + (time - from) / (until - from) * this.area.w;
    }

    timeAt(x) {
        const [from, until] = this.range;
        return from + (x - this.area.x) / this.area.w * (until - from);
    }

    draw(range, area) {
        this.range = range;
        this.area = area;
        const {canvas, flight} = this;
        const scale = window.devicePixelRatio || 1;
        canvas.width = canvas.clientWidth * scale;
        canvas.height = canvas.clientHeight * scale;
        const pen = canvas.getContext('2d');
        pen.scale(scale, scale);
        pen.font = '12px system-ui, "Liberation Sans", "DejaVu Sans", sans-serif';
        pen.textBaseline = 'middle';
        ['light', 'mode', 'events'].forEach((name, i) => {
            pen.fillStyle = '#5d6675';
            pen.fillText(name, 4, 9 + 20 * i);
        });
        pen.save();
        pen.beginPath();
        pen.rect(area.x, 0, area.w, 60);
        pen.clip();
        pen.fillStyle = colour.yellow;
        fillBetween(pen, area, this, flight.start, flight.end, 2, 14);
        pen.fillStyle = '#3b4252';
        for (const [from, until] of flight.shadows)
            fillBetween(pen, area, this, from, until, 2, 14);
        flight.modes.forEach((visit, i) => {
            const left = Math.max(this.toDomXCoord(visit.from_s), area.x);
            const right = Math.min(this.toDomXCoord(visit.until_s), area.x + area.w);
            if (right <= left)
                return;
            pen.fillStyle = i % 2 ? '#b5d4e9' : '#dbe9f4';
            pen.fillRect(left, 22, right - left, 14);
            pen.fillStyle = '#1a1f2b';
            if (pen.measureText(visit.name).width + 6 < right - left)
                pen.fillText(visit.name, left + 4, 29.5);
        });
        for (const event of flight.events) {
            const x = this.toDomXCoord(event.time_s);
            const bad = event.kind !== 'event' && event.kind !== 'command';
            pen.fillStyle = bad ? colour.x : colour.z;
            pen.beginPath(); // a cross is bad, a triangle is meant
            if (bad) {
                pen.rect(x - 1.2, 42, 2.4, 14);
                pen.rect(x - 6, 47.8, 12, 2.4);
            } else {
                pen.moveTo(x, 42);
                pen.lineTo(x + 5, 55);
                pen.lineTo(x - 5, 55);
            }
            pen.fill();
        }
        pen.restore();
    }

    hover(event) {
        const near = this.flight.events.filter(({time_s}) => Math.abs(this.toDomXCoord(time_s) - event.offsetX) < 6);
        this.canvas.title = event.offsetY > 40 ? near.map(({time_s, text}) => `${clock(time_s)} ${text}`).join('\n') : '';
    }

    show(time) {
        place(this.cursor, this.toDomXCoord(time), this.area, 0, 58);
    }
}
