// The page of a flight that is over.
class Page {
    constructor(flight) {
        this.flight = flight;
        this.scrub = document.getElementById('scrub');
        this.button = document.getElementById('play');
        document.title = flight.title || 'ZAVRA-100 flight';
        document.getElementById('title').textContent = document.title;
        document.getElementById('subtitle').textContent =
            flight.live ? `ZAVRA-100 in a simulated satellite, live, from ${utc(flight.start_epoch_msec)}` :
            `ZAVRA-100 in a simulated satellite, ${duration(flight.end - flight.start)} from ` +
            `${utc(flight.start_epoch_msec + 1000 * flight.start)} to ${utc(flight.start_epoch_msec + 1000 * flight.end)}`;
        if (!flight.live) {
            fillTiles(flight);
            fillTables(flight);
        }
        this.plots = new Plots(flight, (time) => this.seek(time));
        this.addScene();
        this.scrub.min = flight.start;
        this.scrub.max = flight.end;
        this.scrub.addEventListener('input', () => this.seek(+this.scrub.value));
        this.button.addEventListener('click', () => this.play(!this.playing));
        window.addEventListener('beforeprint', () => this.prepareForPrint());
        this.seek(flight.live ? flight.end : flight.start);
    }

    addScene() {
        const room = document.getElementById('scene');
        try {
            this.scene = new Scene(room, this.flight);
        } catch (error) {
            room.append(element('p', {}, 'This browser shows no 3D pictures (WebGL is off).'));
            return;
        }
        document.getElementById('frame').addEventListener('change', (event) => {
            this.scene.from = event.target.value;
            this.seek(this.time);
        });
        document.getElementById('arrows').append(...arrowKinds.filter(({id}) => this.scene.arrows.has(id)).map((kind) => {
            const mark = element('i');
            mark.style.background = kind.colour;
            return element('li', {}, mark, kind.text);
        }));
    }

    seek(time) {
        this.time = Math.min(Math.max(time, this.flight.start), this.flight.end);
        this.scrub.value = this.time;
        this.plots.show(this.time);
        fillNow(this.flight, this.time);
        if (this.scene)
            this.scene.show(this.time);
    }

    play(on) {
        this.playing = on;
        this.button.textContent = on ? '❚❚' : '▶';
        this.button.setAttribute('aria-label', on ? 'Pause' : 'Play');
        if (!on)
            return;
        if (this.time >= this.flight.end)
            this.seek(this.flight.start);
        let last = performance.now();
        const step = (now) => {
            if (!this.playing)
                return;
            this.seek(this.time + (now - last) / 1000 * +document.getElementById('speed').value);
            last = now;
            if (this.time >= this.flight.end)
                this.play(false);
            else
                requestAnimationFrame(step);
        };
        requestAnimationFrame(step);
    }

    prepareForPrint() {
        for (const details of document.querySelectorAll('details'))
            details.open = true;
    }
}

const page = new Page(new Flight(JSON.parse(document.getElementById('data').textContent)));
const live = page.flight.live ? new Live(page) : null;
