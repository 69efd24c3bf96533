/// The view that writes labels: the stream at the left, the label at the right, and what ties them together.
import {$, h, keep, memory, say, setClass, setText} from './dom.js';
import {decode} from './bytes.js';
import * as doors from './doors.js';
import {learn} from './help.js';
import {Source} from './source.js';
import {Label, ZOOMS} from './label.js';
import {Fields} from './fields.js';
import {Newest, picture} from './drawing.js';
import {levelOf, marksOf, showFindings} from './findings.js';
import {placeOfLook, placeToSelect} from './edit.js';
import {Mover} from './move.js';
import {pixelsPer} from './rulers.js';
import {NEW_LABEL, wireTools} from './tools.js';

export class Editor {
    constructor() {
        this.settings = {dpi: 203, size: '4x6in', unit: 'mm', ...memory.get('settings', {})};
        this.name = 'label';
        this.page = 1;
        this.total = 0;
        this.report = {page: null, findings: []};
        this.source = new Source({change: () => this.changed(), cursor: () => this.cursorMoved(true), refuse: (text) => say(text, true)});
        this.label = new Label({
            select: (index) => this.choose(index), hover: (index) => this.hover(index), place: (at) => this.place(at),
            zoom: (step, x, y) => this.zoomBy(step, x, y), begin: (index) => this.mover.begin(index),
            drag: (x, y) => this.mover.drag(x, y), end: () => this.mover.end(),
        });
        this.fields = new Fields({select: (index) => this.choose(index, true), hover: (index) => this.label.hover(index)});
        this.mover = new Mover(this);
        this.drawing = new Newest((asked) => this.draw(asked));
        this.checking = new Newest(() => this.check());
        wireTools(this);
        this.applySettings();
    }

    async start() {
        const last = memory.get('stream', null);
        if (last) this.open(last.text, last.encoding, last.name);
        else await doors.readExample('shipping-label').then((bytes) => this.openBytes(bytes, 'shipping-label'), () => this.open(NEW_LABEL, 'utf-8', 'label'));
        try {
            learn(await doors.readCommands());
            this.source.editor.setOption('mode', 'labels');
            this.source.help();
        } catch { /* there is no help then, and all else works */ }
    }

    open(text, encoding, name, settings = {}) {
        this.name = name;
        this.page = 1;
        Object.assign(this.settings, settings);
        this.applySettings();
        this.source.load(text, encoding);
        setText($('file'), name + (encoding === 'utf-8' ? '' : ' (no UTF-8: kept byte for byte)'));
    }

    openBytes(bytes, name, settings) {
        const {text, encoding} = decode(bytes);
        this.open(text, encoding, name, settings);
    }

    applySettings() {
        const {dpi, size, unit} = this.settings;
        $('dpi').value = dpi;
        $('size').value = size;
        this.label.unit = $('unit').value = unit;
        this.label.dpi = Number(dpi);
        this.label.rulers();
        memory.set('settings', this.settings);
    }

    changed() {
        this.isFresh = false;
        this.redraw();
        clearTimeout(this.keepTimer);
        this.keepTimer = setTimeout(() => this.remember(), 500);
    }

    remember() {
        const {text, encoding} = this.source;
        if (text.length < 1 << 20) memory.set('stream', {text, encoding, name: this.name});
    }

    redraw() {
        this.drawing.ask({asked: performance.now()});
    }

    async draw({asked}) {
        const {source} = this;
        const generation = source.editor.changeGeneration();
        try {
            let report = await doors.drawPage(source.bytes, {...this.settings, page: this.page});
            if (!report.page && report.total > 0) {  // the stream has fewer labels now
                this.page = report.total;
                report = await doors.drawPage(source.bytes, {...this.settings, page: this.page});
            }
            const image = report.page && report.page.picture ? await picture(report.page.picture) : null;
            this.show(report, image, source.editor.isClean(generation));
            setText($('status'), report.page ? `${report.page.width} × ${report.page.height} dots, ${Math.round(performance.now() - asked)} ms` : '');
            $('status').dataset.drawn = String(Number($('status').dataset.drawn || 0) + 1);
        } catch (error) {
            this.failed(error);
        }
    }

    /// `isFresh` tells whether the text is still the one that was drawn, so that places in it are right.
    show(report, image, isFresh) {
        this.report = report;
        this.isFresh = isFresh;
        this.total = report.total;
        const page = report.page;
        if (page) this.label.show(image, page, marksOf(page.fields, report.findings, page.label));
        else this.label.clear();
        this.explain(page ? '' : report.error || 'The stream holds no label yet: one begins with ^XA, ends with ^XZ, and draws something.');
        clearTimeout(this.restTimer);
        this.restTimer = setTimeout(() => this.showRest(), 0);
    }

    /// What may come a moment behind the picture.
    showRest() {
        const {page, findings} = this.report;
        this.fields.show(page ? page.fields : [], this.label.marks);
        if (this.isFresh) this.source.showFindings(findings.map((finding) => ({finding, level: levelOf(finding)})));
        showFindings(findings, (finding) => this.goTo(finding));
        this.cursorMoved();
        this.checking.ask();
    }

    failed(error) {
        this.explain(error.message);
        setText($('status'), '');
        if (error.status === 0 || error.status === 429 || error.status === 503) {
            clearTimeout(this.retryTimer);
            this.retryTimer = setTimeout(() => this.redraw(), 2000);
        }
    }

    explain(sentence) {
        setText($('blank'), sentence);
        $('blank').hidden = !sentence;
    }

    /// Names the labels of a stream of several, and learns where each ends.
    async check() {
        $('pages').hidden = this.total < 2;
        this.labels = [];
        if (this.total < 2) return;
        await new Promise((resolve) => { setTimeout(resolve, 150); });
        const generation = this.source.editor.changeGeneration();
        const labels = await doors.checkStream(this.source.bytes, this.settings).then((input) => input.labels || [], () => []);
        if (this.source.editor.isClean(generation)) this.labels = labels;
        this.showPages();
    }

    showPages() {
        const names = Array.from({length: this.total}, (_, i) => `${i + 1}  ${(this.labels[i] || {text: ''}).text.slice(0, 24)}`);
        const select = $('page');
        if (select.options.length !== this.total) select.replaceChildren(...names.map((name, i) => h('option', {value: i + 1}, name)));
        names.forEach((name, i) => setText(select.options[i], name));
        select.value = this.page;
        $('previous').disabled = this.page <= 1;
        $('next').disabled = this.page >= this.total;
    }

    turnTo(page) {
        if (page < 1 || page > this.total || page === this.page) return;
        this.page = page;
        this.label.select(-1);
        this.showPages();
        this.redraw();
    }

    /// Takes the commands of the selected field out of the stream.
    remove() {
        const field = this.isFresh && this.report.page && this.report.page.fields[this.label.selected];
        const place = field && placeToSelect(field);
        if (!place) return;
        const {from, to} = this.source.range(place);
        this.source.editor.replaceRange('', from, to);
        this.select(-1);
    }

    /// A field that was pressed on the label or in the table: its commands are selected.
    choose(index, isFromTable = false) {
        const field = this.report.page && this.report.page.fields[index];
        this.select(field ? index : -1);
        if (!field) return;
        if (isFromTable) this.label.reveal(index);
        const place = placeToSelect(field);
        if (!this.isFresh || !place) return;
        this.isChoosing = true;
        this.source.select(place);
        this.isChoosing = false;
        this.source.light(field.definition && field.definition.commands ? [field.definition.commands] : []);
    }

    /// The next field of the table, or the one before, around its ends.
    chooseNext(step) {
        const count = this.report.page ? this.report.page.fields.length : 0;
        const at = this.label.selected < 0 && step < 0 ? 0 : this.label.selected;
        if (count) this.choose((at + step + count) % count, true);
    }

    select(index) {
        this.label.select(index);
        this.fields.select(index, true);
        const field = this.report.page && this.report.page.fields[index];
        const mark = this.label.marks.get(index);
        setText($('where'), field ? `${index + 1}: ${mark || field.description}` : '');
        setClass($('where'), 'wrong', Boolean(field && mark));
    }

    /// The field whose commands the cursor is in lights up, on its own label.
    cursorMoved(isByHand = false) {
        if (this.isChoosing || !this.isFresh || !this.report.page || this.mover.isMoving) return;
        const byte = this.source.byte();
        const holds = (place) => place && byte >= place.offset && byte < place.offset + place.length;
        const {fields} = this.report.page;
        let index = fields.findIndex((field) => holds(field.commands));
        if (index < 0) index = fields.findIndex((field) => field.definition && holds(field.definition.commands));
        this.select(index);
        this.source.light(index < 0 ? [] : [fields[index].commands, placeOfLook(fields[index])].filter(Boolean));
        if (isByHand && index < 0 && this.labels && this.labels.length === this.total) this.followLabel(byte);
    }

    followLabel(byte) {
        const at = this.labels.findIndex((label) => byte <= label.offset);
        if (at >= 0) this.turnTo(at + 1);
    }

    goTo(finding) {
        if (finding.label && this.labels && this.labels.length) this.turnTo(finding.label);
        if (finding.offset === undefined) return;
        this.source.editor.setCursor(this.source.range({offset: finding.offset, length: 0}).from);
        this.source.editor.focus();
    }

    hover(index) {
        [...$('fields').tBodies[0].children].forEach((row, i) => row.classList.toggle('hovered', i === index));
    }

    /// The place under the pointer, in the unit of the rulers.
    place(at) {
        if (this.label.selected >= 0) return;
        const per = pixelsPer[this.label.unit](this.label);
        const digits = {mm: 1, in: 2, dots: 0}[this.label.unit];
        const isInside = at && at.x >= 0 && at.y >= 0 && at.x < this.label.width && at.y < this.label.height;
        setText($('where'), isInside ? `${(at.x / per).toFixed(digits)}, ${(at.y / per).toFixed(digits)} ${this.label.unit}` : '');
    }

    zoomBy(step, x, y) {
        const now = this.label.scale();
        const next = step > 0 ? ZOOMS.find((zoom) => zoom > now * 1.01) : ZOOMS.findLast((zoom) => zoom < now * 0.99);
        if (next) this.setZoom(next, x, y);
    }

    setZoom(zoom, x, y) {
        this.label.setZoom(zoom, x, y);
        $('zoom').value = String(zoom);
        if ($('zoom').selectedIndex < 0) $('zoom').value = 'fit';
    }

    async print() {
        try {
            await doors.printStream(this.source.bytes);
            const {dpi} = this.printer || {};
            say(dpi && dpi !== Number(this.settings.dpi) ? `Sent to the printer, which has ${dpi} dpi.` : 'Sent to the printer.');
        } catch (error) {
            say(error.message, true);
        }
    }

    async download(format) {
        try {
            const options = {...this.settings, format, rotate: this.label.rotation || '', page: format === 'pdf' ? '' : this.page};
            const number = format === 'png' && this.total > 1 ? `-${this.page}` : '';
            keep(await doors.drawFile(this.source.bytes, options), `${this.name}${number}.${format}`);
        } catch (error) {
            say(error.message, true);
        }
    }
}
