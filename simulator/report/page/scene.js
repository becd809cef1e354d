// The satellite over the Earth: its axes, and where its surroundings are.
const earthRadius_km = 6371;
const earthSize = 400; // its radius in the picture, where the satellite is some 2 wide

const arrowKinds = [
    {id: 'x', text: 'body x', colour: colour.x, body: [1, 0, 0]},
    {id: 'y', text: 'body y', colour: colour.y, body: [0, 1, 0]},
    {id: 'z', text: 'body z', colour: colour.z, body: [0, 0, 1]},
    {id: 'sight', text: 'line of sight (star tracker)', colour: colour.v, body: null},
    {id: 'sun', text: 'sun', colour: colour.yellow, inertial: 'sun'},
    {id: 'field', text: 'magnetic field', colour: colour.w, inertial: 'field'},
    {id: 'velocity', text: 'velocity', colour: colour.u, inertial: 'velocity'},
];

const vector = (numbers) => new THREE.Vector3(...numbers);

class Scene {
    constructor(room, flight) {
        this.flight = flight;
        this.canvas = room.querySelector('canvas');
        this.from = 'orbit';
        this.renderer = new THREE.WebGLRenderer({canvas: this.canvas, antialias: true, preserveDrawingBuffer: true});
        this.renderer.setClearColor('#0b1020');
        this.camera = new THREE.PerspectiveCamera(40, 1, 0.1, 3000);
        this.camera.position.set(-5, 3.9, 7.4);
        this.controls = new THREE.OrbitControls(this.camera, this.canvas);
        this.controls.enablePan = false;
        this.controls.minDistance = 3;
        this.controls.maxDistance = 700;
        this.controls.addEventListener('change', () => this.draw());

        this.stage = new THREE.Scene();
        this.inertial = new THREE.Group();
        this.stage.add(this.inertial);
        this.stage.add(new THREE.AmbientLight('#ffffff', 0.55));
        this.sunlight = new THREE.DirectionalLight('#ffffff', 0.8);
        this.inertial.add(this.sunlight, stars());
        this.earth = earth();
        this.inertial.add(this.earth);
        this.addSatellite();
        this.arrows = new Map();
        for (const kind of arrowKinds)
            this.addArrow(kind);
        new ResizeObserver(() => this.resize()).observe(room);
        this.resize();
    }

    addSatellite() {
        const {satellite} = this.flight;
        const [a, b, c] = satellite ? satellite.inertia_kgm2 : [1, 1, 1];
        // The box whose moments are these.
        const sides = [b + c - a, a + c - b, a + b - c].map((square) => Math.sqrt(Math.max(square, 1e-9)));
        const longest = Math.max(...sides);
        this.sides = sides.map((side) => (satellite ? 2 : 1.2) * Math.max(side / longest, 0.15));
        const materials = ['#d9c7b8', '#a08f84', '#bcd4c8', '#84988e', '#b9cadb', '#8593a3']
            .map((each) => new THREE.MeshLambertMaterial({color: each}));
        this.body = new THREE.Mesh(new THREE.BoxGeometry(...this.sides), materials);
        this.body.add(new THREE.LineSegments(new THREE.EdgesGeometry(this.body.geometry),
                                             new THREE.LineBasicMaterial({color: '#11151f'})));
        this.inertial.add(this.body);
    }

    addArrow(kind) {
        const body = kind.body || (kind.id === 'sight' && this.flight.satellite && this.flight.satellite.line_of_sight);
        if (!body && !kind.inertial)
            return;
        const direction = body ? vector(body).normalize() : new THREE.Vector3(1, 0, 0);
        const length = kind.id.length === 1 ? 1.9 : kind.id === 'sight' ? 2.5 : 2.2;
        const arrow = thickArrow(kind.colour, length, kind.id.length === 1 ? kind.id : kind.id === 'field' ? 'B' : kind.id);
        arrow.quaternion.setFromUnitVectors(new THREE.Vector3(0, 1, 0), direction);
        (body ? this.body : this.inertial).add(arrow);
        this.arrows.set(kind.id, arrow);
    }

    resize() {
        const {clientWidth: width, clientHeight: height} = this.canvas.parentElement;
        if (!width || !height)
            return;
        this.renderer.setPixelRatio(window.devicePixelRatio || 1);
        this.renderer.setSize(width, height, false);
        this.camera.aspect = width / height;
        this.camera.updateProjectionMatrix();
        this.draw();
    }

    show(time) {
        const {before, after, part} = this.flight.attitude(time);
        if (before.length < 4)
            return;
        this.body.quaternion.set(...before).normalize().slerp(new THREE.Quaternion(...after).normalize(), part);
        const {position, velocity, field, sun} = this.flight.place(time);
        const zenith = vector(position).normalize();
        const around = {sun: vector(sun), field: vector(field), velocity: vector(velocity)};
        for (const {id, inertial} of arrowKinds)
            if (inertial && around[inertial].lengthSq() > 0)
                this.arrows.get(id).quaternion.setFromUnitVectors(new THREE.Vector3(0, 1, 0), around[inertial].normalize());
        const dark = this.flight.inShadow(time);
        this.arrows.get('sun').visible = !dark;
        this.sunlight.position.copy(around.sun);
        for (const material of this.body.material) // the sun lights the Earth meanwhile
            material.emissive.set(dark ? '#000000' : '#202020');
        this.earth.position.copy(vector(position).multiplyScalar(-earthSize / earthRadius_km));
        // TEME's pole is the z axis, three.js' spheres have it along y.
        this.earth.quaternion.setFromAxisAngle(new THREE.Vector3(0, 0, 1), siderealTime(this.flight, time))
            .multiply(new THREE.Quaternion().setFromAxisAngle(new THREE.Vector3(1, 0, 0), Math.PI / 2));
        this.inertial.quaternion.copy(this.frame(zenith, around.velocity));
        this.draw();
    }

    // What turns inertial vectors into the picture's, whose y is up.
    frame(zenith, flight) {
        if (this.from === 'body')
            return this.body.quaternion.clone().conjugate();
        if (this.from === 'inertial')
            return new THREE.Quaternion().setFromAxisAngle(new THREE.Vector3(1, 0, 0), -Math.PI / 2);
        const across = new THREE.Vector3().crossVectors(flight, zenith).normalize();
        const along = new THREE.Vector3().crossVectors(zenith, across);
        return new THREE.Quaternion().setFromRotationMatrix(new THREE.Matrix4().makeBasis(along, zenith, across)).conjugate();
    }

    draw() {
        this.renderer.render(this.stage, this.camera);
    }
}

// Greenwich mean sidereal time, to the eye.
function siderealTime(flight, time) {
    const days = (flight.start_epoch_msec / 1000 + time) / 86400 - 10957.5;
    return (280.46062 + 360.98564737 * days) % 360 / deg;
}

function thickArrow(shade, length, text) {
    const arrow = new THREE.Group();
    const material = new THREE.MeshBasicMaterial({color: shade});
    const shaft = new THREE.Mesh(new THREE.CylinderGeometry(0.03, 0.03, length, 12), material);
    shaft.position.y = length / 2;
    const head = new THREE.Mesh(new THREE.ConeGeometry(0.09, 0.28, 16), material);
    head.position.y = length;
    const label = sprite(text, shade);
    label.position.y = length + 0.38;
    arrow.add(shaft, head, label);
    return arrow;
}

function sprite(text, shade) {
    const canvas = element('canvas', {width: 256, height: 64});
    const pen = canvas.getContext('2d');
    pen.font = 'bold 42px system-ui, "Liberation Sans", "DejaVu Sans", sans-serif';
    pen.textAlign = 'center';
    pen.textBaseline = 'middle';
    pen.lineWidth = 8;
    pen.strokeStyle = '#0b1020';
    pen.strokeText(text, 128, 32);
    pen.fillStyle = new THREE.Color(shade).lerp(new THREE.Color('#ffffff'), 0.45).getStyle();
    pen.fillText(text, 128, 32);
    const made = new THREE.Sprite(new THREE.SpriteMaterial({map: new THREE.CanvasTexture(canvas), depthTest: false}));
    made.scale.set(1.6, 0.4, 1);
    return made;
}

function earth() {
    const group = new THREE.Group();
    group.add(new THREE.Mesh(new THREE.SphereGeometry(earthSize, 96, 64), new THREE.MeshLambertMaterial({color: '#2f6597'})));
    const points = {fine: [], bold: []};
    const point = (latitude, longitude) => new THREE.Vector3().setFromSphericalCoords(
        earthSize * 1.0015, Math.PI / 2 - latitude / deg, longitude / deg);
    const line = (kind, from, to) => points[kind].push(point(...from), point(...to));
    for (let longitude = -180; longitude < 180; longitude += 15)
        for (let latitude = -90; latitude < 90; latitude += 3)
            line(longitude === 0 ? 'bold' : 'fine', [latitude, longitude], [latitude + 3, longitude]);
    for (let latitude = -75; latitude <= 75; latitude += 15)
        for (let longitude = -180; longitude < 180; longitude += 3)
            line(latitude === 0 ? 'bold' : 'fine', [latitude, longitude], [latitude, longitude + 3]);
    for (const [kind, shade] of [['fine', '#9cc3e6'], ['bold', '#e8f1f9']])
        group.add(new THREE.LineSegments(new THREE.BufferGeometry().setFromPoints(points[kind]),
                                         new THREE.LineBasicMaterial({color: shade, transparent: true, opacity: 0.8})));
    return group;
}

// Some, always the same: they show what turns.
function stars() {
    const points = [];
    let seed = 1;
    const random = () => (seed = seed * 16807 % 2147483647) / 2147483647;
    for (let i = 0; i < 600; ++i)
        points.push(new THREE.Vector3().setFromSphericalCoords(2500, Math.acos(2 * random() - 1), 2 * Math.PI * random()));
    return new THREE.Points(new THREE.BufferGeometry().setFromPoints(points),
                            new THREE.PointsMaterial({color: '#c8d2e6', size: 2, sizeAttenuation: false}));
}
