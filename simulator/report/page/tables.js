// What came of the flight, and what it was made from.
function tile(value, text, note) {
    const known = value !== '–';
    return element('div', {class: known ? 'tile' : 'tile none', title: note || ''}, element('b', {}, value), element('span', {}, text));
}

function fillTiles(flight) {
    const {summary, caught_radps, settled_rad, hold_s} = flight;
    const held = `and stayed there for ${duration(hold_s)}`;
    const error = summary.pointing_error_rad;
    const lastPointing = flight.modes.filter((visit) => visit.pointing_error_rad).pop();
    const worst = Math.max(0, ...summary.wheels.map(({saturated_s}) => saturated_s || 0));
    const faults = flight.events.filter(({kind}) => kind === 'fault' || kind === 'refused').length;
    document.getElementById('tiles').append(
        tile(`${number(summary.start_rate_radps * deg)} → ${number(summary.end_rate_radps * deg)} °/s`, 'body rate, first and last'),
        tile(duration(summary.caught_s), `caught: below ${number(caught_radps * deg)} °/s`, `The rate fell below this ${held}`),
        tile(duration(summary.settled_s), `to settle below ${number(settled_rad * deg)}°`,
             `In the last mode that points, the pointing error fell below this ${held}`),
        tile(lastPointing ? angle(lastPointing.pointing_error_rad.p95) : '–', 'pointing error, 95 %',
             'In the last mode that points, since it has settled'),
        tile(angle(summary.estimation_error_rad && summary.estimation_error_rad.p95), 'attitude estimate, 95 %',
             'The angle between what the unit believed and the truth'),
        tile(`${Math.round(100 * summary.shadow_part)} %`, 'of the time in shadow'),
        tile(summary.wheels.every(({limit}) => limit === null) ? '–' : duration(worst), 'a wheel saturated'),
        ...(faults ? [tile(String(faults), 'faults and refusals')] : []));
}

function table(heads, rows, attributes = {}) {
    const cells = (kind, texts) => texts.map((text, i) =>
        element(kind, typeof heads[i] === 'string' ? {} : {class: 'number'}, text));
    return element('table', attributes,
        element('thead', {}, element('tr', {}, ...cells('th', heads.map((head) => [].concat(head)[0])))),
        element('tbody', {}, ...rows.map((row) => element('tr', {}, ...cells('td', row)))));
}

function fillTables(flight) {
    const room = document.getElementById('tables');
    const {summary} = flight;
    const section = (title, ...children) => room.append(element('h2', {}, title), ...children);
    const errors = (spread) => spread ? [spread.median, spread.p95, spread.p99, spread.max].map(angle) : ['–', '–', '–', '–'];

    section('Modes', element('p', {class: 'hint'}, 'Pointing errors are those since the mode has settled, or all of them where it ' +
        `never has: below ${number(flight.settled_rad * deg)}° for ${duration(flight.hold_s)}. They are what the unit believes.`),
        table(['Mode', ['from'], ['for'], ['settled after'], ['error, median'], ['95 %'], ['99 %'], ['greatest'],
               ['estimate against truth, 95 %']],
              flight.modes.map((visit) => [visit.name, clock(visit.from_s), duration(visit.until_s - visit.from_s),
                  visit.settled_s === null ? '–' : duration(visit.settled_s - visit.from_s), ...errors(visit.pointing_error_rad),
                  angle(visit.estimation_error_rad && visit.estimation_error_rad.p95)]), {id: 'modes'}));

    const actuators = (list, name, unit) => list.filter(({limit, peak}) => limit !== null || peak > 0).map((each) => [`${name} ${each.name}`, number(each.peak, unit),
        number(each.limit, unit), each.limit === null ? '–' : duration(each.saturated_s)]);
    section('Actuators', table(['Actuator', ['greatest'], ['limit'], ['at its limit for']],
        [...actuators(summary.wheels, 'wheel', 'rad/s'), ...actuators(summary.magnetorquers, 'magnetorquer', 'A m²')]));

    section(`Events (${flight.events.length + flight.events_left_out})`, element('div', {class: 'scroll'},
        table(['Time', 'Kind', 'What'], flight.events.map(({time_s, kind, text}) => [clock(time_s), kind, text]), {id: 'events'})));
    if (!flight.events.length)
        document.getElementById('events').replaceWith('None is known.');
    if (flight.events_left_out)
        room.append(element('p', {class: 'hint'}, `${flight.events_left_out} later ones are left out.`));

    section('To repeat it', ...(flight.command_line ? [element('pre', {id: 'command'}, flight.command_line)] : [
        element('p', {}, 'This was made from a record alone, which does not tell what the flight was made from.')]),
        ...flight.files.map(({name, text}) => element('details', {}, element('summary', {}, name), element('pre', {}, text))));
}

// The numbers at the time of the picture.
function fillNow(flight, time) {
    const place = flight.place(time);
    const norm = (values) => Math.hypot(...values);
    const rates = axes.map((axis) => flight.at(`angular_velocity_${axis}_radps`, time));
    const rows = [
        ['since the start', clock(time)],
        ['time', utc(flight.start_epoch_msec + 1000 * time)],
        ['mode', flight.modeAt(time)],
        ['altitude', `${Math.round(norm(place.position) - earthRadius_km)} km`],
        ['light', flight.inShadow(time) ? 'shadow' : 'sunlight'],
        ['body rate', number(norm(rates) * deg, '°/s')],
        ['pointing error', angle(flight.at('pointing_error_rad', time))],
        ['estimate against truth', angle(flight.at('estimation_error_rad', time))],
    ];
    document.getElementById('now').replaceChildren(...rows.map(([name, value]) =>
        element('tr', {}, element('th', {}, name), element('td', {}, value))));
}
