/// The view of the printer: jobs as they come, their pages, and what is told and stored.
import {$, counted, fill, h, say, setAttribute, setText} from './dom.js';
import * as doors from './doors.js';
import {decode} from './bytes.js';
import {listFindings} from './findings.js';
import {Newest} from './drawing.js';
import {Log} from './log.js';
import {Objects} from './objects.js';

const WORDS = {
    'pause': 'Pause', 'resume': 'Resume', 'cancel': 'Cancel', 'cancel-all': 'Cancel all', 'feed': 'Feed', 'calibrate': 'Calibrate',
};
const SPEEDS = ['0', '2', '4', '6', '8', '10', '12', '14'];
const SHOWN_STREAM = 200000;
const MOST_PAGES = 500;
const NOT_READY = 503;
/// In place of a job: all of them.
const ALL = '';

export class Printer {
    constructor(open) {
        this.open = open;
        this.jobs = [];
        this.chosen = ALL;
        this.isFollowing = true;
        this.reading = new Newest(() => this.read());
        this.log = new Log();
        this.objects = new Objects(open);
        $('viewer-close').onclick = () => $('viewer').close();
    }

    /// False if there is no printer.
    async start() {
        this.state = await this.firstState();
        if (!this.state) return false;
        this.showState();
        this.connect();
        // A browser has few connections for one address: tabs that nobody looks at give theirs back.
        document.addEventListener('visibilitychange', () => {
            this.events.close();
            if (!document.hidden) this.connect();
        });
        return true;
    }

    /// A printer that starts says so; null if there is none.
    async firstState() {
        for (;;) {
            try {
                return await doors.readPrinter();
            } catch (refused) {
                if (refused.status !== NOT_READY) return null;
            }
            await new Promise((resolve) => setTimeout(resolve, 500));
        }
    }

    connect() {
        this.events = doors.printerEvents();
        this.events.onmessage = (event) => this.told(JSON.parse(event.data));
        this.events.addEventListener('lost', () => this.readAgain());
        this.events.onopen = () => { this.isCut = false; this.readAgain(); };
        this.events.onerror = () => this.lost();
    }

    /// The browser asks again by itself, but not where it was refused.
    lost() {
        this.isCut = true;
        this.showState();
        if (this.events.readyState === EventSource.CLOSED) setTimeout(() => this.connect(), 3000);
    }

    enter() {
        if (this.state) this.objects.read();
    }

    async readAgain() {
        this.reading.ask();
        this.log.reset(await doors.readLog().catch(() => []));
    }

    /// Events say that something has changed; what it is now, the printer's doors say, not more often than a person can see.
    told(event) {
        this.log.add(event);
        if (event.event === 'notice' && (event.text === 'paused' || event.text === 'resumed')) {
            this.state.paused = event.text === 'paused';
            this.showState();
        }
        if (event.event === 'page') this.grown(event);
        if (event.event === 'done' && !$('panel-objects').hidden) this.objects.read();
        this.reading.ask();
    }

    async read() {
        const now = await Promise.all([doors.readPrinter(), doors.readJobs()]).catch(() => null);  // events tell when it is back
        if (!now) return;
        [this.state, this.jobs] = now;
        this.show();
        await new Promise((resolve) => { setTimeout(resolve, 150); });
    }

    grown({job, page}) {
        const known = this.jobs.find((one) => one.id === job);
        if (!known) return;
        known.printed = Math.max(known.printed, page);
        if (known.id === this.chosen) this.showPages([known]);
        if (this.chosen === ALL) this.showPages(this.jobs);
    }

    show() {
        this.showState();
        if (this.isFollowing && this.jobs[0]) this.chosen = this.jobs[0].id;
        this.showJobs();
        this.showJob(this.jobs.find((job) => job.id === this.chosen));
    }

    showState() {
        const {address, dpi, size, out, paused, printing, speed, tag} = this.state;
        const word = this.isCut ? 'not reached' : paused ? 'paused' : printing ? 'printing' : 'ready';
        const link = $('printer-state');
        link.hidden = false;
        link.dataset.state = word.replace(' ', '-');
        if (link.title !== word) fill(link, h('span', {}, 'Printer '), word);
        link.title = word;
        const about = [address, `${dpi} dpi`, size, tag && `tags with ${tag}`, out && `pages in ${out}`];
        setText($('printer-about'), about.filter(Boolean).join('  ·  '));
        this.showWords(paused);
        this.showSpeed(String(speed));
    }

    showSpeed(speed) {
        const select = $('printer-speed');
        select.parentElement.hidden = !this.state.words.includes('speed');
        const speeds = SPEEDS.includes(speed) ? SPEEDS : [...SPEEDS, speed];
        if (select.options.length !== speeds.length) {
            fill(select, ...speeds.map((one) => h('option', {value: one}, one === '0' ? 'fastest' : `${one} in/s`)));
            select.onchange = () => this.command(`speed ${select.value}`);
        }
        if (document.activeElement !== select) select.value = speed;
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

    /// A row for each job. Rows stay the same elements as long as their jobs are there, so that a press in the middle of a
    /// change is not lost.
    showJobs() {
        const list = $('jobs');
        const known = new Map([...list.querySelectorAll('[data-job]')].map((row) => [row.dataset.job, row]));
        const rowOf = (id) => known.get(id) || h('button', {class: 'row job', 'data-job': id, onclick: () => this.choose(id)});
        const all = rowOf(ALL);
        setText(all, 'All pages');
        const rows = [all, ...this.jobs.map((job) => this.fillRow(rowOf(job.id), job))];
        rows.forEach((row) => setAttribute(row, 'aria-pressed', row.dataset.job === this.chosen));
        if (rows.length !== list.childElementCount || rows.some((row, i) => list.children[i] !== row)) this.placeRows(list, rows);
    }

    placeRows(list, rows) {
        const focused = list.contains(document.activeElement) ? document.activeElement : null;
        const hint = h('p', {class: 'quiet pad'}, `Nothing has printed yet. Send a stream to ${this.state.address}, or press Print in the editor.`);
        fill(list, ...(rows.length > 1 ? rows : [hint]));
        if (focused) focused.focus();
    }

    /// Who looks at the newest job goes on to the next one when it comes.
    choose(id) {
        this.chosen = id;
        this.isFollowing = id === this.jobs[0].id;
        this.show();
    }

    fillRow(row, job) {
        const key = [job.state, job.findings.length, job.printed, job.pages].join();
        if (row.dataset.key === key) return row;
        row.dataset.key = key;
        const findings = job.findings.length;
        fill(row, h('span', {class: `lamp ${job.state.replace(' ', '-')}`, title: job.state}), h('span', {class: 'ellipsis name'}, job.id),
            findings > 0 && h('span', {class: 'count', title: counted(findings, 'finding')}, String(findings)),
            h('span', {class: 'quiet number'}, `${job.printed} / ${job.pages}`), h('span', {class: 'quiet time'}, (job.time || '').slice(11, 19)));
        return row;
    }

    showJob(job) {
        const key = job ? [job.id, job.state, job.findings.length, job.answers.length].join() : '';
        this.showPages(job ? [job] : this.jobs);
        if (this.shownKey === key) return;
        this.shownKey = key;
        if (job) {
            fill($('job-head'), h('h2', {}, job.id), h('span', {class: 'quiet'}, job.state), h('span', {class: 'space'}),
                job.stream && h('button', {id: 'open-job', onclick: () => this.openJob(job)}, 'Open in editor'));
            this.showDetail(job);
        } else {
            fill($('job-head'), this.jobs.length > 0 && h('h2', {}, 'All pages'));
            fill($('job-detail'));
        }
    }

    /// The pages that have printed; those that are shown already stay as they are.
    showPages(jobs) {
        const gallery = $('gallery');
        const known = new Map([...gallery.children].map((page) => [page.title, page]));
        const pages = [];
        for (const job of jobs) {
            for (let page = 1; page <= job.printed && pages.length < MOST_PAGES; ++page) {
                const name = `${job.id}, page ${page}`;
                pages.push(known.get(name) || this.pageOf(job, page, name));
            }
        }
        if (pages.length !== known.size || pages.some((page, i) => gallery.children[i] !== page)) fill(gallery, ...pages);
        gallery.classList.toggle('single', jobs.length === 1 && pages.length === 1);
    }

    pageOf(job, page, name) {
        const source = doors.pagePath(job.id, page);
        const look = () => {
            setText($('viewer-name'), name);
            $('viewer-picture').src = source;
            $('viewer-picture').alt = name;
            $('viewer').showModal();
        };
        return h('button', {class: 'page', title: name, onclick: look}, h('img', {src: source, alt: name, loading: 'lazy'}), h('span', {class: 'quiet ellipsis'}, name));
    }

    async showDetail(job) {
        const parts = [];
        if (job.findings.length) parts.push(h('h3', {}, 'Findings'), listFindings(job.findings));
        if (job.answers.length) parts.push(h('h3', {}, 'Answers'), ...job.answers.map((text) => h('pre', {class: 'stream'}, text)));
        $('job-detail').replaceChildren(...parts);
        if (!job.stream) return;
        const bytes = await doors.readJobStream(job.id).catch(() => null);
        if (!bytes || this.chosen !== job.id) return;
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
