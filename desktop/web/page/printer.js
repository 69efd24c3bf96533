/// The view of the printer: jobs as they come, their pages, and what is told and stored.
import {$, counted, fill, h, say, setText} from './dom.js';
import * as doors from './doors.js';
import {decode} from './bytes.js';
import {listFindings} from './findings.js';
import {Log} from './log.js';
import {Objects} from './objects.js';

const WORDS = {
    'pause': 'Pause', 'resume': 'Resume', 'cancel': 'Cancel', 'cancel-all': 'Cancel all', 'feed': 'Feed', 'calibrate': 'Calibrate',
};
const SHOWN_STREAM = 200000;

export class Printer {
    constructor(open) {
        this.open = open;
        this.jobs = [];
        this.chosen = '';
        this.log = new Log();
        this.objects = new Objects(open);
        $('viewer-close').onclick = () => $('viewer').close();
    }

    /// False if there is no printer.
    async start() {
        try {
            this.state = await doors.readPrinter();
        } catch {
            return false;
        }
        this.showState();
        this.events = doors.printerEvents();
        this.events.onmessage = (event) => this.told(JSON.parse(event.data));
        this.events.addEventListener('lost', () => this.readAgain());
        this.events.onopen = () => { this.isCut = false; this.readAgain(); };
        this.events.onerror = () => { this.isCut = true; this.showState(); };
        return true;
    }

    enter() {
        if (this.state) this.objects.read();
    }

    async readAgain() {
        try {
            [this.state, this.jobs] = await Promise.all([doors.readPrinter(), doors.readJobs()]);
            this.log.reset(await doors.readLog().catch(() => []));
        } catch (error) {
            this.isCut = true;
            say(error.message, true);
        }
        this.show();
    }

    /// Events say that something has changed; what it is now, the printer's doors say, not more often than a person can see.
    told(event) {
        this.log.add(event);
        if (event.event === 'notice' && (event.text === 'paused' || event.text === 'resumed')) {
            this.state.paused = event.text === 'paused';
            this.showState();
        }
        if (event.event === 'page') this.grown(event);
        if (this.timer) return;
        this.timer = setTimeout(async () => {
            this.timer = 0;
            await Promise.all([doors.readPrinter(), doors.readJobs()])
                .then(([state, jobs]) => { [this.state, this.jobs] = [state, jobs]; this.show(); }, () => {});
        }, 120);
    }

    grown({job, page}) {
        const known = this.jobs.find((one) => one.id === job);
        if (!known) return;
        known.printed = Math.max(known.printed, page);
        if (known.id === this.shownJob) this.showPages(known);
    }

    show() {
        this.showState();
        this.showJobs();
        if (!this.jobs.some((job) => job.id === this.chosen)) this.isFollowing = true;
        if (this.isFollowing !== false && this.jobs[0]) this.chosen = this.jobs[0].id;
        this.showJob(this.jobs.find((job) => job.id === this.chosen));
    }

    showState() {
        const {address, dpi, size, out, paused, printing, speed, tag} = this.state;
        const word = this.isCut ? 'not reached' : paused ? 'paused' : printing ? 'printing' : 'ready';
        const link = $('printer-state');
        link.hidden = false;
        link.dataset.state = word.replace(' ', '-');
        setText(link, `Printer ${word}`);
        const about = [address, `${dpi} dpi`, size, speed && `speed ${speed}`, tag && `tags ${tag}`, out && `pages in ${out}`];
        setText($('printer-about'), about.filter(Boolean).join('  ·  '));
        this.showWords(paused);
    }

    showWords(paused) {
        const words = this.state.words.filter((word) => WORDS[word] && word !== (paused ? 'pause' : 'resume'));
        const bar = $('printer-words');
        if (bar.dataset.words === words.join()) return;
        bar.dataset.words = words.join();
        const had = bar.contains(document.activeElement) ? [...bar.children].indexOf(document.activeElement) : -1;
        bar.replaceChildren(...words.map((word) => h('button', {'data-word': word, onclick: () => this.command(word)}, WORDS[word])));
        if (had >= 0 && bar.children[had]) bar.children[had].focus();
    }

    async command(word) {
        try {
            await doors.command(word);
        } catch (error) {
            say(error.message, true);
        }
    }

    showJobs() {
        const list = $('jobs');
        const focused = list.contains(document.activeElement) ? document.activeElement.dataset.job : '';
        list.replaceChildren(...this.jobs.map((job) => this.jobRow(job)));
        if (!this.jobs.length) list.append(h('p', {class: 'quiet pad'}, `Nothing has printed yet. Send a stream to ${this.state.address}, or press Print in the editor.`));
        const again = focused && [...list.children].find((row) => row.dataset.job === focused);
        if (again) again.focus();
    }

    jobRow(job) {
        const findings = job.findings.length;
        const choose = () => {
            this.chosen = job.id;
            this.isFollowing = job.id === this.jobs[0].id;
            this.show();
        };
        return h('button', {class: 'row job', 'data-job': job.id, 'aria-pressed': String(job.id === this.chosen), onclick: choose},
            h('span', {class: `lamp ${job.state}`, title: job.state}), h('span', {class: 'ellipsis name'}, job.id),
            findings > 0 && h('span', {class: 'count', title: counted(findings, 'finding')}, String(findings)),
            h('span', {class: 'quiet number'}, `${job.printed} / ${job.pages}`), h('span', {class: 'quiet time'}, (job.time || '').slice(11, 19)));
    }

    showJob(job) {
        if (!job) {
            $('job-head').replaceChildren();
            $('gallery').replaceChildren();
            $('job-detail').replaceChildren();
            this.shownJob = '';
            return;
        }
        this.showPages(job);
        const key = [job.id, job.state, job.findings.length, job.answers.length].join();
        if (this.shownKey === key) return;
        this.shownKey = key;
        fill($('job-head'), h('h2', {}, job.id), h('span', {class: 'quiet'}, job.state), h('span', {class: 'space'}),
            job.stream && h('button', {id: 'open-job', onclick: () => this.openJob(job)}, 'Open in editor'));
        this.showDetail(job);
    }

    /// The pages that are printed, of which those that are there already stay.
    showPages(job) {
        const gallery = $('gallery');
        if (this.shownJob !== job.id) gallery.replaceChildren();
        this.shownJob = job.id;
        for (let page = gallery.childElementCount + 1; page <= Math.min(job.printed, 500); ++page) gallery.append(this.pageOf(job, page));
    }

    pageOf(job, page) {
        const source = doors.pagePath(job.id, page);
        const name = `${job.id}, page ${page}`;
        const look = () => {
            setText($('viewer-name'), name);
            $('viewer-picture').src = source;
            $('viewer-picture').alt = name;
            $('viewer').showModal();
        };
        return h('button', {class: 'page', title: name, onclick: look}, h('img', {src: source, alt: name, loading: 'lazy'}), h('span', {class: 'quiet'}, String(page)));
    }

    async showDetail(job) {
        const parts = [];
        if (job.findings.length) parts.push(h('h3', {}, 'Findings'), listFindings(job.findings));
        if (job.answers.length) parts.push(h('h3', {}, 'Answers'), ...job.answers.map((text) => h('pre', {class: 'stream'}, text)));
        $('job-detail').replaceChildren(...parts);
        if (!job.stream) return;
        const bytes = await doors.readJobStream(job.id).catch(() => null);
        if (!bytes || this.shownJob !== job.id) return;
        const {text} = decode(bytes);
        const cut = text.length > SHOWN_STREAM ? `${text.slice(0, SHOWN_STREAM)}\n…` : text;
        $('job-detail').replaceChildren(...parts, h('h3', {}, 'Stream'), h('pre', {class: 'stream', tabindex: '0'}, cut));
    }

    async openJob(job) {
        try {
            this.open(await doors.readJobStream(job.id), job.name || job.id, {dpi: this.state.dpi, size: this.state.size});
        } catch (error) {
            say(error.message, true);
        }
    }
}
