// Our encoder and decoder, in a process of their own.

import {spawn} from 'node:child_process';
import {createInterface} from 'node:readline';

export class Codec {
    constructor() {
        this.process = spawn(process.env.CODEC_SERVER, {stdio: ['pipe', 'pipe', 'inherit']});
        this.lines = createInterface({input: this.process.stdout})[Symbol.asyncIterator]();
    }

    async ask(request) {
        this.process.stdin.write(JSON.stringify(request) + '\n');
        const {value, done} = await this.lines.next();
        if (done) throw new Error('the codec has ended');
        return JSON.parse(value);
    }

    async encode(model) {
        const {text, error} = await this.ask({encode: model});
        if (error) throw new Error(error);
        return text;
    }

    async decode(text) {
        const {model, error} = await this.ask({decode: text});
        if (error) throw new Error(`${error}, in ${text}`);
        return model;
    }

    close() {
        this.process.stdin.end();
    }
}
