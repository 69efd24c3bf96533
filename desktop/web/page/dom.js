/// Elements and words. Text always becomes a text node, so that nothing of a stream is ever read as HTML.

export const $ = (id) => document.getElementById(id);

/// h('button', {class: 'x', onclick: f, 'aria-label': 'y'}, 'words', child, ...); what is null or false is left out.
export function h(tag, attributes = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (value === null || value === undefined || value === false) continue;
        if (name.startsWith('on')) element.addEventListener(name.slice(2), value);
        else element.setAttribute(name, value === true ? '' : value);
    }
    element.append(...children.filter(isChild));
    return element;
}

const isChild = (child) => child !== null && child !== undefined && child !== false && child !== '';

export const fill = (element, ...children) => element.replaceChildren(...children.filter(isChild));

export const counted = (count, word) => `${count} ${word}${count === 1 ? '' : 's'}`;

/// Sets a text or an attribute only where it differs, since the table and the boxes are told anew with each key.
export function setText(element, text) {
    if (element.textContent !== text) element.textContent = text;
}

export function setAttribute(element, name, value) {
    if (value === null) element.removeAttribute(name);
    else if (element.getAttribute(name) !== String(value)) element.setAttribute(name, value);
}

export function setClass(element, name, on) {
    if (element.classList.contains(name) !== on) element.classList.toggle(name, on);
}

let toastTimer = 0;
/// Says a sentence for a while, at the foot of the page.
export function say(sentence, isBad = false) {
    const toast = $('toast');
    toast.textContent = sentence;
    toast.classList.toggle('bad', isBad);
    toast.hidden = false;
    clearTimeout(toastTimer);
    toastTimer = setTimeout(() => { toast.hidden = true; }, isBad ? 8000 : 3500);
}

/// Gives the browser a file to keep.
export function keep(blob, name) {
    const link = h('a', {href: URL.createObjectURL(blob), download: name});
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}

/// What the page remembers on this machine, if the browser lets it.
export const memory = {
    get(key, fallback) {
        try {
            return JSON.parse(localStorage.getItem(`zpl.${key}`)) ?? fallback;
        } catch {
            return fallback;
        }
    },
    set(key, value) {
        try {
            localStorage.setItem(`zpl.${key}`, JSON.stringify(value));
        } catch { /* full, or forbidden */ }
    },
};
