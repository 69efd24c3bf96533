/// The views, by the hash of the address.
import {$, setAttribute} from './dom.js';
import {Editor} from './editor.js';
import {Printer} from './printer.js';
import {Examples} from './examples.js';

const VIEWS = ['editor', 'printer', 'examples'];

const editor = new Editor();
const openInEditor = (...what) => {
    editor.openBytes(...what);
    location.hash = '#editor';
};
const printer = new Printer(openInEditor);
const examples = new Examples(openInEditor);

function route() {
    const wanted = location.hash.slice(1).split('/')[0];
    const view = VIEWS.includes(wanted) ? wanted : 'editor';
    for (const name of VIEWS) $(name).hidden = name !== view;
    for (const link of document.querySelectorAll('nav a')) setAttribute(link, 'aria-current', link.hash === `#${view}` ? 'page' : null);
    document.title = `${view[0].toUpperCase()}${view.slice(1)} – ZplHost`;
    if (view === 'editor') editor.source.editor.refresh();
    if (view === 'printer') printer.enter();
    if (view === 'examples') examples.enter();
}

addEventListener('hashchange', route);
editor.start();
printer.start().then((isThere) => {
    editor.printer = printer.state;
    $('print').hidden = !isThere;
    document.querySelector('nav a[href="#printer"]').hidden = !isThere;
    if (!isThere && location.hash.startsWith('#printer')) location.hash = '#editor';
});
route();
