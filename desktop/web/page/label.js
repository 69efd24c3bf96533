/// The label on its desk: the page dot for dot, zoom, the boxes of its fields, and what a hand does with them.
import {$, setAttribute, setClass} from './dom.js';
import {drawRulers} from './rulers.js';
import {hit} from './hit.js';

const SVG = 'http://www.w3.org/2000/svg';
const MARGIN = 24;
export const ZOOMS = [0.125, 0.25, 0.5, 0.75, 1, 1.5, 2, 3, 4, 6, 8, 12, 16, 24, 32];

export class Label {
    /// `on` has select(index), hover(index), place(x, y) and the three of a drag: begin(index), drag(pixels), end().
    constructor(on) {
        this.on = on;
        this.zoom = 'fit';
        this.rotation = 0;
        this.fields = [];
        this.marks = new Map();
        this.selected = -1;
        this.hovered = -1;
        this.width = this.height = 0;
        this.paper = $('paper');
        this.ink = this.paper.getContext('2d', {willReadFrequently: true});
        this.listen();
    }

    listen() {
        const stage = $('stage');
        stage.addEventListener('scroll', () => this.rulers());
        stage.addEventListener('pointerdown', (event) => this.down(event));
        stage.addEventListener('pointermove', (event) => this.move(event));
        stage.addEventListener('pointerup', (event) => this.up(event));
        stage.addEventListener('pointercancel', (event) => this.up(event));
        stage.addEventListener('pointerleave', () => { this.hover(-1); this.on.place(null); });
        stage.addEventListener('wheel', (event) => this.wheel(event), {passive: false});
        new ResizeObserver(() => this.layout()).observe(stage);
        matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => this.rulers());
    }

    /// A new picture of the page, with its fields; `marks` holds a finding for the index of a field.
    show(picture, page, marks) {
        const resized = this.width !== page.width || this.height !== page.height;
        this.width = page.width;
        this.height = page.height;
        if (resized) {
            this.paper.width = page.width;
            this.paper.height = page.height;
        }
        this.ink.drawImage(picture, 0, 0);
        this.fields = page.fields;
        this.pixelsPerDot = page.pixelsPerDot;
        this.marks = marks;
        if (resized) this.layout();
        this.boxes();
    }

    clear() {
        this.fields = [];
        this.marks = new Map();
        this.boxes();
        this.ink.clearRect(0, 0, this.width, this.height);
    }

    /// CSS pixels for a pixel of the page.
    scale() {
        if (this.zoom !== 'fit') return this.zoom;
        const stage = $('stage');
        const [width, height] = this.rotation % 180 ? [this.height, this.width] : [this.width, this.height];
        const fit = Math.min((stage.clientWidth - 2 * MARGIN) / width, (stage.clientHeight - 2 * MARGIN) / height);
        // Whole pixels for a dot, where there is room for them.
        return fit >= 2 ? Math.floor(fit) : Math.max(fit, 0.02);
    }

    layout() {
        if (!this.width || !$('stage').clientWidth) return;
        const scale = this.scale();
        const [width, height] = [this.width * scale, this.height * scale];
        const isAcross = this.rotation % 180 !== 0;
        const sheet = $('sheet').style;
        sheet.width = `${isAcross ? height : width}px`;
        sheet.height = `${isAcross ? width : height}px`;
        const turn = $('turn').style;
        turn.width = `${width}px`;
        turn.height = `${height}px`;
        const shift = {0: '', 90: `translate(${height}px, 0)`, 180: `translate(${width}px, ${height}px)`, 270: `translate(0, ${width}px)`};
        turn.transform = `${shift[this.rotation]} rotate(${this.rotation}deg)`;
        // From one device pixel a dot on, dots stay squares; below, the page is averaged.
        setClass(this.paper, 'dots', scale * devicePixelRatio >= 1);
        setAttribute($('boxes'), 'viewBox', `0 0 ${this.width} ${this.height}`);
        this.rulers();
    }

    rulers() {
        drawRulers(this);
    }

    /// Keeps the place at the middle, or at (x, y) of the stage, where it is.
    setZoom(zoom, x, y) {
        const stage = $('stage');
        const before = stage.getBoundingClientRect();
        const at = this.toPage((x ?? before.left + stage.clientWidth / 2), (y ?? before.top + stage.clientHeight / 2));
        this.zoom = zoom;
        this.layout();
        const now = this.toScreen(at.x, at.y);
        stage.scrollLeft += now.x - (x ?? before.left + stage.clientWidth / 2);
        stage.scrollTop += now.y - (y ?? before.top + stage.clientHeight / 2);
        this.rulers();
    }

    setRotation(degrees) {
        this.rotation = degrees;
        this.layout();
    }

    /// Pixels of the page under a point of the window, and back.
    toPage(clientX, clientY) {
        const box = $('sheet').getBoundingClientRect();
        const scale = this.scale();
        const [u, v] = [(clientX - box.left) / scale, (clientY - box.top) / scale];
        switch (this.rotation) {
            case 90: return {x: v, y: this.height - u};
            case 180: return {x: this.width - u, y: this.height - v};
            case 270: return {x: this.width - v, y: u};
            default: return {x: u, y: v};
        }
    }

    toScreen(x, y) {
        const box = $('sheet').getBoundingClientRect();
        const scale = this.scale();
        const [u, v] = {0: [x, y], 90: [this.height - y, x], 180: [this.width - x, this.height - y], 270: [y, this.width - x]}[this.rotation];
        return {x: box.left + u * scale, y: box.top + v * scale};
    }

    wheel(event) {
        if (!event.ctrlKey) return;
        event.preventDefault();
        this.on.zoom(event.deltaY < 0 ? 1 : -1, event.clientX, event.clientY);
    }

    down(event) {
        if (event.button !== 0 || !this.width) return;
        const index = hit(this, this.toPage(event.clientX, event.clientY));
        const wasSelected = index === this.selected;
        this.on.select(index);
        // A finger scrolls, but for the field that it has selected.
        const isTouch = event.pointerType === 'touch';
        setClass($('stage'), 'held', isTouch && index >= 0);
        if (index < 0 || (isTouch && !wasSelected)) return;
        $('stage').setPointerCapture(event.pointerId);
        this.held = {index, x: event.clientX, y: event.clientY, moved: false};
    }

    move(event) {
        const at = this.toPage(event.clientX, event.clientY);
        this.on.place(at);
        if (!this.held) {
            this.hover(hit(this, at));
            return;
        }
        const from = this.toPage(this.held.x, this.held.y);
        const [x, y] = [at.x - from.x, at.y - from.y];
        if (!this.held.moved && Math.hypot(event.clientX - this.held.x, event.clientY - this.held.y) < 4) return;
        if (!this.held.moved) {
            this.held.moved = true;
            if (!this.on.begin(this.held.index)) this.held = null;
        }
        if (this.held) this.on.drag(event.shiftKey && Math.abs(x) < Math.abs(y) ? 0 : x, event.shiftKey && Math.abs(x) >= Math.abs(y) ? 0 : y);
    }

    up() {
        if (this.held && this.held.moved) this.on.end();
        this.held = null;
    }

    hover(index) {
        if (index === this.hovered) return;
        this.hovered = index;
        $('stage').title = index < 0 ? '' : this.marks.get(index) || this.fields[index].description;
        setClass($('stage'), 'over', index >= 0);
        this.paint(index);
        this.on.hover(index);
    }

    select(index) {
        this.selected = index;
        this.paint(index);
    }

    /// A rectangle for each field; refused barcodes get one where they would begin.
    boxes() {
        const boxes = $('boxes');
        while (boxes.childElementCount > this.fields.length) boxes.lastChild.remove();
        while (boxes.childElementCount < this.fields.length) boxes.append(document.createElementNS(SVG, 'rect'));
        this.fields.forEach((field, index) => {
            const rect = boxes.children[index];
            const box = boxOf(field, this.pixelsPerDot);
            setAttribute(rect, 'visibility', box ? null : 'hidden');
            if (!box) return;
            setAttribute(rect, 'x', box.left);
            setAttribute(rect, 'y', box.top);
            setAttribute(rect, 'width', box.width);
            setAttribute(rect, 'height', box.height);
        });
        this.paint();
    }

    paint() {
        const rects = $('boxes').children;
        for (let i = 0; i < rects.length; ++i) {
            setClass(rects[i], 'selected', i === this.selected);
            setClass(rects[i], 'hovered', i === this.hovered);
            setClass(rects[i], 'bad', this.marks.has(i));
        }
    }

    /// Brings a field into sight.
    reveal(index) {
        const box = this.fields[index] && boxOf(this.fields[index], this.pixelsPerDot);
        if (!box) return;
        const stage = $('stage');
        const frame = stage.getBoundingClientRect();
        const at = this.toScreen(box.left + box.width / 2, box.top + box.height / 2);
        if (at.x < frame.left || at.x > frame.right) stage.scrollLeft += at.x - frame.left - frame.width / 2;
        if (at.y < frame.top || at.y > frame.bottom) stage.scrollTop += at.y - frame.top - frame.height / 2;
    }
}

/// The box of a field's ink; for what draws nothing but has been refused, a place to point at.
export function boxOf(field, pixelsPerDot) {
    const box = field.box || field.drawn;
    if (box || field.kind !== 'barcode' || !field.origin) return box || null;
    return {left: field.origin.x * pixelsPerDot, top: field.origin.y * pixelsPerDot, width: 120, height: 40, isGuess: true};
}
