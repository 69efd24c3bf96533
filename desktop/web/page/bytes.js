/// Streams are bytes, the editor holds UTF-16: what is between them.

/// The text of a stream. What is no UTF-8 is taken byte for byte, one character for each, so that it is sent as it came.
export function decode(bytes) {
    try {
        return {text: new TextDecoder('utf-8', {fatal: true, ignoreBOM: true}).decode(bytes), encoding: 'utf-8'};
    } catch {
        const parts = [];
        const all = new Uint8Array(bytes);
        for (let i = 0; i < all.length; i += 32768) parts.push(String.fromCharCode(...all.subarray(i, i + 32768)));
        return {text: parts.join(''), encoding: 'bytes'};
    }
}

export function encode(text, encoding) {
    if (encoding === 'utf-8') return new TextEncoder().encode(text);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
    return bytes;
}

/// Whether all of a text can be sent where a character is a byte.
export const isBytes = (text) => !/[^\0-\xff]/.test(text);

const STEP = 1024;

/// Offsets in bytes of a stream against places in its text.
export class Offsets {
    constructor(text, encoding) {
        this.text = text;
        this.isSame = encoding !== 'utf-8' || !/[^\0-\x7f]/.test(text);
        if (this.isSame) return;
        this.marks = [0];  // bytes before each STEP of UTF-16 units
        let bytes = 0;
        for (let i = 0; i < text.length; ++i) {
            if (i > 0 && i % STEP === 0) this.marks.push(bytes);
            bytes += this.size(i);
        }
    }

    /// Bytes that come with the unit at i: those of a pair come with its first half, and a half alone is sent as U+FFFD.
    size(i) {
        const unit = this.text.charCodeAt(i);
        if (unit < 0x80) return 1;
        if (unit < 0x800) return 2;
        const isHigh = (at) => (this.text.charCodeAt(at) & 0xfc00) === 0xd800;
        const isLow = (at) => (this.text.charCodeAt(at) & 0xfc00) === 0xdc00;
        if (isHigh(i) && isLow(i + 1)) return 4;
        if (isLow(i) && i > 0 && isHigh(i - 1)) return 0;
        return 3;
    }

    toByte(index) {
        if (this.isSame) return index;
        const mark = Math.min(Math.floor(index / STEP), this.marks.length - 1);
        let bytes = this.marks[mark];
        for (let i = mark * STEP; i < index && i < this.text.length; ++i) bytes += this.size(i);
        return bytes;
    }

    /// The place of a byte; of one amid a character, that of the character.
    toIndex(byte) {
        if (this.isSame) return Math.min(byte, this.text.length);
        let low = 0;
        let high = this.marks.length - 1;
        while (low < high) {
            const middle = (low + high + 1) >> 1;
            if (this.marks[middle] <= byte) low = middle;
            else high = middle - 1;
        }
        let bytes = this.marks[low];
        let i = low * STEP;
        while (i < this.text.length && bytes + this.size(i) <= byte) bytes += this.size(i++);
        return i;
    }
}
