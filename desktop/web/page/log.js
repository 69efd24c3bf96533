/// What the printer tells, in a list that can be filtered, and what it has answered.
import {$, counted, h} from './dom.js';

const KINDS = ['job', 'page', 'done', 'finding', 'answer', 'notice'];
const MOST = 2000;

const sentences = {
    ready: (e) => `ready at ${e.address}`,
    web: (e) => `this page is at ${e.address}`,
    job: (e) => `${e.job} begins: ${counted(e.pages, 'page')}`,
    page: (e) => `${e.job}, page ${e.page}`,
    done: (e) => `${e.job} ends: ${e.printed} of ${counted(e.pages, 'page')} printed`,
    finding: (e) => `${e.job ? `${e.job}: ` : ''}${e.line ? `line ${e.line}, column ${e.column}: ` : ''}${e.text}`,
    answer: (e) => e.text,
};

export class Log {
    constructor() {
        this.hidden = new Set();
        this.filter = '';
        $('log-filter').addEventListener('input', (event) => { this.filter = event.target.value.toLowerCase(); this.sift(); });
        $('log-kinds').append(...KINDS.map((kind) => h('button', {class: 'chip', 'aria-pressed': 'true', onclick: (event) => this.toggle(kind, event.target)}, kind)));
        this.wireTabs();
    }

    wireTabs() {
        const tabs = [...document.querySelectorAll('.more [role="tab"]')];
        const show = (tab) => tabs.forEach((one) => {
            one.setAttribute('aria-selected', one === tab);
            one.tabIndex = one === tab ? 0 : -1;
            $(one.getAttribute('aria-controls')).hidden = one !== tab;
        });
        tabs.forEach((tab, i) => {
            tab.onclick = () => show(tab);
            tab.onkeydown = (event) => {
                const step = {ArrowRight: 1, ArrowLeft: tabs.length - 1}[event.key];
                if (!step) return;
                const next = tabs[(i + step) % tabs.length];
                show(next);
                next.focus();
            };
        });
    }

    toggle(kind, button) {
        const isShown = this.hidden.delete(kind);
        if (!isShown) this.hidden.add(kind);
        button.setAttribute('aria-pressed', isShown);
        this.sift();
    }

    reset(events) {
        $('log').replaceChildren();
        $('answers').replaceChildren();
        events.forEach((event) => this.add(event));
    }

    add(event) {
        const sentence = (sentences[event.event] || ((e) => e.text || ''))(event);
        const time = event.time || new Date().toTimeString();
        const row = h('li', {'data-kind': event.event}, h('time', {}, time.slice(time.indexOf('T') + 1).slice(0, 8)),
            h('span', {class: 'kind'}, event.event), h('span', {class: 'what'}, sentence));
        row.hidden = this.hides(row);
        const log = $('log');
        log.prepend(row);
        if (log.childElementCount > MOST) log.lastChild.remove();
        if (event.event === 'answer') this.answered(event.text, event.time);
    }

    /// Answers with their control characters as pictures.
    answered(text, time = '') {
        const seen = text.replace(/[\0-\x1f]/g, (unit) => unit === '\n' ? '␊\n' : String.fromCharCode(0x2400 + unit.charCodeAt(0)));
        $('answers').prepend(h('li', {}, h('time', {}, time.slice(11, 19)), h('pre', {}, seen)));
    }

    hides(row) {
        return this.hidden.has(row.dataset.kind) || !row.textContent.toLowerCase().includes(this.filter);
    }

    sift() {
        for (const row of $('log').children) row.hidden = this.hides(row);
    }
}
