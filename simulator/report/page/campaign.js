// The page of a campaign: how results are spread, and the seeds behind them.
const svgName = 'http://www.w3.org/2000/svg';

function shape(name, attributes = {}, ...children) {
    const made = document.createElementNS(svgName, name);
    for (const [key, value] of Object.entries(attributes))
        made.setAttribute(key, value);
    made.append(...children);
    return made;
}

// Drawn values and results by name, numbers of lists each with its own.
function flattened(run) {
    const values = {};
    for (const [name, value] of [...Object.entries(run.drawn), ...Object.entries(run.results)])
        if (Array.isArray(value)) {
            value.forEach((part, i) => values[`${name} ${i + 1}`] = part);
            if (value.length === 3)
                values[`${name} (length)`] = Math.hypot(...value);
        } else {
            values[name] = value;
        }
    return values;
}

function niceTicks(low, high, wanted) {
    const rough = (high - low) / wanted || 1;
    const power = 10 ** Math.floor(Math.log10(rough));
    const step = power * [1, 2, 5, 10].find((each) => each * power >= rough);
    const ticks = [];
    for (let k = Math.ceil(low / step - 1e-9); k * step <= high + 1e-9 * step; ++k)
        ticks.push(k * step);
    return ticks;
}

class Campaign {
    constructor({title, runs}) {
        this.runs = runs.map((run) => ({...run, values: flattened(run)}));
        this.results = Object.keys(runs[0].results).filter((name) => runs.some((run) => run.results[name] !== null));
        this.names = Object.keys(this.runs[0].values)
            .filter((name) => this.runs.some((run) => run.values[name] != null));
        document.title = document.getElementById('title').textContent = title;
        document.getElementById('subtitle').textContent =
            `${runs.length} runs, seeds ${runs[0].seed} to ${runs[runs.length - 1].seed}`;
        this.fillSpread();
        document.getElementById('histograms').append(...this.results.map((name) => this.histogram(name)));
        const choice = (id, start) => {
            const select = document.getElementById(id);
            select.append(...this.names.map((name) => element('option', {}, name)));
            select.value = start;
            select.addEventListener('change', () => this.scatter());
            return select;
        };
        const main = this.results[0];
        const drawn = this.names.filter((name) => !(name in runs[0].results));
        drawn.sort((a, b) => this.dependence(b, main) - this.dependence(a, main));
        this.across = choice('across', drawn[0] || main);
        this.up = choice('up', main);
        this.choose(this.ranked(main).pop());
    }

    // Runs from the best to the worst; what never came is the worst.
    ranked(name) {
        const order = (run) => run.values[name] === null ? Infinity : run.values[name];
        return [...this.runs].sort((a, b) => order(a) < order(b) ? -1 : order(a) > order(b) ? 1 : a.seed - b.seed);
    }

    // How much of one number follows from the other: the size of their correlation.
    dependence(a, b) {
        const pairs = this.runs.map(({values}) => [values[a], values[b]]).filter((pair) => !pair.includes(null));
        const mean = [0, 1].map((i) => pairs.reduce((sum, pair) => sum + pair[i], 0) / pairs.length);
        const product = (i, k) => pairs.reduce((sum, pair) => sum + (pair[i] - mean[i]) * (pair[k] - mean[k]), 0);
        return Math.abs(product(0, 1)) / Math.sqrt(product(0, 0) * product(1, 1)) || 0;
    }

    fillSpread() {
        const seedButton = (run) => {
            const button = element('button', {type: 'button', class: 'seed'}, String(run.seed));
            button.addEventListener('click', () => this.choose(run));
            return button;
        };
        const rows = this.results.map((name) => {
            const ranked = this.ranked(name);
            const at = (part) => {
                const value = ranked[Math.max(Math.ceil(part * ranked.length), 1) - 1].values[name];
                return element('td', {class: 'number'}, value === null ? 'never' : number(value, '', 4));
            };
            const came = ranked.filter((run) => run.values[name] !== null).length;
            return element('tr', {}, element('td', {}, name), element('td', {class: 'number'}, `${came}`),
                ...[0.5, 0.95, 0.99, 1].map(at), element('td', {}, ...ranked.slice(-3).reverse().map(seedButton)));
        });
        const heads = ['result', 'came', 'median', '95 %', '99 %', 'greatest', 'worst seeds'];
        document.getElementById('spread').append(element('table', {}, element('thead', {}, element('tr', {},
            ...heads.map((head, i) => element('th', i > 0 && i < 6 ? {class: 'number'} : {}, head)))),
            element('tbody', {}, ...rows)));
    }

    histogram(name) {
        const [width, height, left, bottom, top] = [360, 210, 40, 34, 26];
        const came = this.runs.map((run) => run.values[name]).filter((value) => value !== null);
        const never = this.runs.length - came.length;
        const low = Math.min(...came), high = Math.max(...came);
        const bins = Array(24).fill(0);
        for (const value of came)
            ++bins[Math.min(Math.floor((value - low) / (high - low || 1) * bins.length), bins.length - 1)];
        const most = Math.max(...bins, never, 1);
        const right = never ? width - 40 : width - 8;
        const x = (value) => left + (value - low) / (high - low || 1) * (right - left);
        const y = (count) => height - bottom - count / most * (height - bottom - top);
        const step = (right - left) / bins.length;
        const bar = (count, at, wide, kind, text) => shape('rect', {
            x: at, y: y(count), width: wide, height: height - bottom - y(count), class: kind}, shape('title', {}, text));
        return shape('svg', {viewBox: `0 0 ${width} ${height}`, role: 'img', 'aria-label': name},
            shape('text', {x: left, y: 14, class: 'title'}, name),
            ...niceTicks(0, most, 4).filter(Number.isInteger).flatMap((count) => [
                shape('line', {x1: left, x2: width - 8, y1: y(count), y2: y(count)}),
                shape('text', {x: left - 5, y: y(count) + 4, 'text-anchor': 'end'}, String(count))]),
            ...bins.map((count, i) => bar(count, left + i * step, Math.max(step - 1, 1), 'bar', `${count} runs`)),
            ...niceTicks(low, high, 4).map((value) =>
                shape('text', {x: x(value), y: height - bottom + 15, 'text-anchor': 'middle'}, number(value, '', 4))),
            ...(never ? [bar(never, right + 8, 20, 'never', `${never} never`),
                shape('text', {x: right + 18, y: height - bottom + 15, 'text-anchor': 'middle'}, 'never')] : []));
    }

    scatter() {
        const [width, height, left, bottom, top] = [1000, 460, 70, 44, 14];
        const [across, up] = [this.across.value, this.up.value];
        const range = (name) => {
            const values = this.runs.map((run) => run.values[name]).filter((value) => value !== null);
            return [Math.min(...values), Math.max(...values)];
        };
        const scale = ([low, high], from, to) => (value) => from + (value - low) / (high - low || 1) * (to - from);
        const [xRange, yRange] = [range(across), range(up)];
        const x = scale(xRange, left, width - 30), y = scale(yRange, height - bottom, top + 30);
        const marks = this.runs.map((run) => {
            const [a, b] = [run.values[across], run.values[up]];
            const [cx, cy] = [a === null ? width - 12 : x(a), b === null ? top : y(b)];
            const never = a === null || b === null;
            const mark = never ? shape('path', {d: `M${cx - 4} ${cy - 4}l8 8m0 -8l-8 8`})
                : shape('circle', {cx, cy, r: 4});
            mark.setAttribute('class', `run${never ? ' never' : ''}${run === this.chosen ? ' chosen' : ''}`);
            mark.append(shape('title', {}, `seed ${run.seed}: ${number(a, '', 4)}, ${b === null ? 'never' : number(b, '', 4)}`));
            mark.addEventListener('click', () => this.choose(run));
            return mark;
        });
        document.getElementById('scatter').replaceChildren(
            shape('svg', {viewBox: `0 0 ${width} ${height}`, role: 'img', 'aria-label': `${up} over ${across}`},
                ...niceTicks(...yRange, 6).flatMap((value) => [
                    shape('line', {x1: left, x2: width - 30, y1: y(value), y2: y(value)}),
                    shape('text', {x: left - 6, y: y(value) + 4, 'text-anchor': 'end'}, number(value, '', 4))]),
                ...niceTicks(...xRange, 8).map((value) =>
                    shape('text', {x: x(value), y: height - bottom + 16, 'text-anchor': 'middle'}, number(value, '', 4))),
                shape('text', {x: width / 2, y: height - 8, 'text-anchor': 'middle', class: 'title'}, across),
                shape('text', {x: 12, y: height / 2, 'text-anchor': 'middle', class: 'title',
                               transform: `rotate(-90 12 ${height / 2})`}, up), ...marks));
    }

    choose(run) {
        this.chosen = run;
        document.getElementById('run-title').textContent = `Seed ${run.seed}`;
        document.getElementById('run').textContent = `${run.command_line} --report seed_${run.seed}.html`;
        document.getElementById('run-values').replaceChildren(...Object.entries(run.values).map(([name, value]) =>
            element('tr', {}, element('td', {}, name), element('td', {class: 'number'}, value === null ? 'never' : number(value, '', 5)))));
        this.scatter();
    }
}

const campaign = new Campaign(JSON.parse(document.getElementById('data').textContent));
