// A flight that goes on: what the simulator sends is added to the page, and the page has buttons for what may happen.
const most_rows = 20000;

// What telemetry calls what the record has.
const truthOf = {
    ...Object.fromEntries([1, 2, 3, 4].map((i) => [`quaternion_attitude_${i}_bf`, `q_${i}`])),
    ...Object.fromEntries(axes.flatMap((axis) => [
        [`angular_velocity_${axis}_radps`, `angular_velocity_${axis}_radps`],
        [`measured_magnetic_field_${axis}_bf_t`, `magnetic_field_${axis}_t`],
        [`measured_sun_vector_${axis}_bf`, `sun_vector_${axis}`],
        [`magnetorquers_target_dipole_moment_${axis}_am2`, `dipole_moment_${axis}_am2`]])),
    ...Object.fromEntries(['x', 'y', 'z', 'u', 'v', 'w'].map((axis) =>
        [`reactionwheel_current_speed_${axis}_radps`, `wheel_speed_${axis}_radps`])),
};

class Live {
    constructor(page) {
        this.page = page;
        this.flight = page.flight;
        this.lines = [];
        this.dark = this.flight.inShadow(this.flight.end);
        document.getElementById('live').hidden = false;
        const faults = document.getElementById('faults');
        for (const fault of this.flight.live.faults)
            faults.append(this.button(fault, {fault}));
        const factor = document.getElementById('factor');
        factor.addEventListener('change', () => this.send({time: {factor: +factor.value}}));
        const source = new EventSource('stream');
        source.onmessage = (event) => this.take(JSON.parse(event.data));
        source.onerror = () => this.tell('The simulated unit is gone; the page waits for it.');
    }

    button(text, request) {
        const button = element('button', {type: 'button'}, text);
        button.addEventListener('click', () => this.send(request));
        return button;
    }

    async send(request) {
        const note = document.getElementById('note');
        try {
            const response = await fetch('control', {method: 'POST', body: JSON.stringify(request)});
            const answer = await response.json();
            note.textContent = answer.error || '';
        } catch (error) {
            note.textContent = 'The simulated unit does not answer.';
        }
    }

    tell(text) {
        const lost = document.getElementById('lost');
        lost.hidden = !text;
        lost.textContent = text;
    }

    take({run, moment, telemetry, journal, time_factor}) {
        if (run !== this.flight.live.run) { // another one at the same address
            location.reload();
            return;
        }
        this.tell('');
        const factor = document.getElementById('factor');
        if (document.activeElement !== factor)
            factor.value = time_factor;
        this.fillTelemetry(telemetry, moment);
        this.lines = [...this.lines, ...journal].slice(-200);
        this.mark(journal.map((line) => JSON.parse(line)));
        if (journal.length)
            document.getElementById('journal').textContent = this.lines.map(journalLine).reverse().join('\n');
        if (moment.time_s > this.flight.end) {
            this.follows = this.follows || this.page.time >= this.flight.end;
            if (moment.time_s - this.flight.end > 2 * Math.max(time_factor, 1)) // nobody knows what was between
                this.appendRow((this.flight.end + moment.time_s) / 2, {});
            this.append(moment);
        }
    }

    // What changes something, or went wrong.
    mark(entries) {
        for (const {time_msec, direction, command, fault} of entries) {
            const text = [].concat(command || []).join(' or ');
            if (time_msec / 1000 > this.flight.end && (fault || (direction === 'write' && text && !text.includes('Get_'))))
                this.flight.events.push({time_s: time_msec / 1000, kind: fault ? 'fault' : 'command',
                                         text: fault ? `${fault}: ${text}` : text});
        }
    }

    append(moment) {
        const {flight, page} = this;
        const time = moment.time_s;
        const three = (name, unit = '') => axes.map((axis) => moment[`${name}_${axis}${unit}`]);
        const four = (name) => [1, 2, 3, 4].map((i) => moment[`${name}_${i}`]);
        const attitude = new THREE.Quaternion(...four('q'));
        const inertial = (numbers) => new THREE.Vector3(...numbers).applyQuaternion(attitude).toArray();
        const all = {...moment, angular_velocity_radps: Math.hypot(...three('angular_velocity', '_radps')),
                     estimation_error_rad: moment.estimated_q_4 === null ? null
                         : attitude.angleTo(new THREE.Quaternion(...four('estimated_q')))};
        this.appendRow(time, all);
        flight.attitudes.push(time, ...four('q'));
        flight.places.push(time, ...three('position', '_km'), ...three('velocity', '_kmps'),
                           ...inertial(three('magnetic_field', '_t')), ...inertial(three('sun_vector')));
        this.prolong(flight.modes, time, moment.mode);
        const dark = moment.sunlight < 0.5;
        if (dark && this.dark)
            flight.shadows[flight.shadows.length - 1][1] = time;
        else if (dark)
            flight.shadows.push([time, time]);
        this.dark = dark;
        if (flight.time_s.length > most_rows)
            location.reload(); // the simulator has thinned it meanwhile
        this.drawSoon();
    }

    appendRow(time, values) {
        for (const [name, curve] of Object.entries(this.flight.curves))
            curve.push(name in values ? values[name] : null);
        this.flight.time_s.push(time);
    }

    // Not before the browser has shown the picture before: a slow one draws less often.
    drawSoon() {
        if (this.drawing)
            return;
        this.drawing = true;
        requestAnimationFrame(() => {
            const {flight, page} = this;
            page.scrub.max = flight.end;
            const now = performance.now();
            if (!(now - this.plotted < 1000)) {
                this.plotted = now;
                page.plots.update();
            }
            if (this.follows && !page.playing)
                page.seek(flight.end);
            this.follows = false;
            requestAnimationFrame(() => setTimeout(() => this.drawing = false, 100));
        });
    }

    prolong(visits, time, mode) {
        const last = visits[visits.length - 1];
        last.until_s = time;
        if (last.mode !== mode)
            visits.push({mode, name: this.flight.mode_names[mode] || 'unknown', from_s: time, until_s: time});
    }

    fillTelemetry(telemetry, moment) {
        document.getElementById('telemetry').replaceChildren(element('tr', {}, element('th', {}, 'telemetry'),
            element('th', {class: 'number'}, 'on the bus'), element('th', {class: 'number'}, 'truth')),
            ...Object.entries(telemetry).filter(([name]) => !name.includes('epoch')).map(([name, value]) => element('tr', {},
                element('td', {}, name), element('td', {class: 'number'}, number(+value, '', 4)),
                element('td', {class: 'number'}, truthOf[name] ? number(moment[truthOf[name]], '', 4) : ''))));
    }
}

function journalLine(text) {
    const {time_msec, direction, command, fields, fault, error} = JSON.parse(text);
    return [clock(time_msec / 1000), direction, [].concat(command || []).join(' or '),
            fields && Object.keys(fields).length ? JSON.stringify(fields) : '', fault ? `FAULT ${fault}` : '', error || '']
        .filter((part) => part).join(' ');
}
