/// All requests of the page; they go to where the page came from, and nowhere else.

/// An answer that says in a sentence what is wrong.
export class Refused extends Error {
    constructor(status, sentence) {
        super(sentence);
        this.status = status;
    }
}

async function ask(path, options = {}) {
    let answer;
    try {
        answer = await fetch(path, {cache: 'no-store', ...options});
    } catch {
        throw new Refused(0, 'The program behind this page does not answer. Is it still running?');
    }
    if (answer.ok) return answer;
    const text = await answer.text().catch(() => '');
    let sentence = text;
    try {
        sentence = JSON.parse(text).error;
    } catch { /* a plain sentence */ }
    throw new Refused(answer.status, sentence || `The answer was ${answer.status}.`);
}

const bytes = {'Content-Type': 'application/octet-stream'};
const post = (path, body, headers = bytes) => ask(path, {method: 'POST', body, headers});
const query = (values) => new URLSearchParams(Object.entries(values).filter(([, value]) => value !== '' && value !== undefined));

/// The report of one page with its picture, and how many pages the stream has.
export async function drawPage(stream, {dpi, size, page}) {
    const answer = await post(`render?${query({dpi, size, page, format: 'json', picture: 1})}`, stream);
    const total = Number(answer.headers.get('X-Total-Count') || 0);
    const report = await answer.json();
    const input = report.inputs[0];
    const first = (input.pages || [])[0] || null;
    return {total: total || (first ? 1 : 0), page: first, findings: input.findings || [], error: input.error || ''};
}

export const checkStream = async (stream, {dpi, size}) => (await (await post(`check?${query({dpi, size})}`, stream)).json()).inputs[0];

/// A file of one page (png) or of all (pdf).
export const drawFile = async (stream, {dpi, size, page, rotate, format}) =>
    (await post(`render?${query({dpi, size, page, rotate, format})}`, stream)).blob();

export const readCommands = async () => (await (await ask('commands.json')).json()).commands;
export const readExample = async (name) => (await ask(`examples/${name}.zpl`)).arrayBuffer();

export const readPrinter = async () => (await ask('printer')).json();
export const readJobs = async () => (await (await ask('printer/jobs')).json()).jobs;
export const readLog = async () => (await (await ask('printer/log')).json()).events;
export const readJobStream = async (id) => (await ask(`printer/jobs/${encodeURIComponent(id)}/stream`)).arrayBuffer();
export const pagePath = (id, page) => `printer/jobs/${encodeURIComponent(id)}/pages/${page}`;
export const printStream = (stream) => post('printer/print', stream);
export const command = (word) => post('printer/command', JSON.stringify({word}), {'Content-Type': 'application/json'});
export const readObjects = async () => (await (await ask('printer/objects')).json()).objects;
export const objectPath = ({device, name}) => `printer/objects/${encodeURIComponent(device)}/${encodeURIComponent(name)}`;
export const readObject = async (object) => (await ask(objectPath(object))).arrayBuffer();
export const removeObject = (object) => ask(objectPath(object), {method: 'DELETE'});
export const resetPrinter = () => post('printer/reset', '');
export const printerEvents = () => new EventSource('printer/events');
