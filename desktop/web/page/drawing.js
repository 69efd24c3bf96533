/// One request at a time, and always the newest: what is asked meanwhile waits, and what waits gives way to what comes later.
export class Newest {
    constructor(work) {
        this.work = work;
        this.isBusy = false;
        this.waiting = null;
    }

    ask(input) {
        if (this.isBusy) this.waiting = {input};
        else this.run(input);
    }

    async run(input) {
        this.isBusy = true;
        try {
            for (let next = {input}; next; next = this.waiting) {
                this.waiting = null;
                await this.work(next.input);
            }
        } finally {
            this.isBusy = false;
        }
    }
}

/// The picture of a data: address, ready to be painted.
export async function picture(address) {
    const image = new Image();
    image.src = address;
    await image.decode();
    return image;
}
