// A small agent, with nothing but what Node.js brings (18 or later).
//
// Reads the line that `./try --serve` prints, where an agent would have the credential from pairing:
//
//     ./try --serve >bridge.json &
//     node examples/agent.ts <bridge.json
//
// Before Node.js 22.18 the types have to be taken out first:
//
//     esbuild examples/agent.ts --format=esm --outfile=agent.mjs && node agent.mjs <bridge.json

import { readFileSync } from "node:fs";

type Problem = { code: string; message?: string };
type Answer = { result?: unknown; error?: Problem };
type Calendar = { id: string; title: string };
type Reminder = { id: string; listTitle: string; title: string };

// The bridge's answer when it did not do it. Decide by `code`; the message is for people.
class Refused extends Error {
    readonly code: string;

    constructor(problem: Problem) {
        super(problem.message ?? problem.code);
        this.code = problem.code;
    }
}

class Bridge {
    private readonly address: string;
    private readonly credential: string;

    constructor(address: string, credential: string) {
        this.address = address;
        this.credential = credential;
    }

    health(): Promise<{ name: string }> {
        return this.send("/health");
    }

    execute<Result>(operation: string, payload?: object, confirmed = false): Promise<Result> {
        return this.send("/v1/execute", { operation, payload, confirmed });
    }

    private async send<Result>(path: string, body?: object): Promise<Result> {
        const response = await fetch(`http://${this.address}${path}`, {
            method: body ? "POST" : "GET",
            headers: { Authorization: `Bearer ${this.credential}`, "Content-Type": "application/json" },
            body: body && JSON.stringify(body),
            // Longer than the bridge lets any application take.
            signal: AbortSignal.timeout(60_000),
        });
        const answer = (await response.json()) as Answer;
        if (answer.error) throw new Refused(answer.error);
        return answer.result as Result;
    }
}

// A real agent asks the user here, and nobody else.
async function userAgrees(question: string): Promise<boolean> {
    console.log(`Asked: ${question} Answered: yes.`);
    return true;
}

async function main(): Promise<void> {
    const told = JSON.parse(readFileSync(0, "utf8").split("\n")[0]);
    const bridge = new Bridge(told.address, told.credential);

    console.log(`${(await bridge.health()).name} is up.`);

    const calendars = await bridge.execute<Calendar[]>("calendar.list");
    console.log("Calendars:", calendars.map((calendar) => calendar.title).join(", "));

    // The bridge takes no fractions of a second.
    const due = new Date(Date.now() + 24 * 3600 * 1000).toISOString().replace(/\.\d+/, "");
    const reminder = await bridge.execute<Reminder>("reminders.create", { title: "Water the plants", dueDate: due, priority: 0 });
    console.log(`Created a reminder in ${reminder.listTitle}.`);

    // A refusal is not the end: say what the user can do, and go on with what is allowed.
    try {
        const found = await bridge.execute<object[]>("contacts.search", { query: "", limit: 500 });
        console.log(`Contacts: ${found.length > 0 ? "some" : "none"}.`);
    } catch (problem) {
        if (!(problem instanceof Refused) || problem.code !== "capability_denied") throw problem;
        console.log(`Contacts: ${problem.message}; the user can switch it on in the dashboard.`);
    }

    try {
        await bridge.execute("reminders.delete", { identifier: reminder.id });
    } catch (problem) {
        if (!(problem instanceof Refused) || problem.code !== "confirmation_required") throw problem;
        console.log(`Not deleted: ${problem.message}`);
        if (await userAgrees("Delete the reminder?"))
            await bridge.execute("reminders.delete", { identifier: reminder.id }, true);
    }

    const left = await bridge.execute<Reminder[]>("reminders.search", { listIDs: [], query: "Water the plants" });
    console.log(`Left of it: ${left.length}.`);
}

main().catch((problem) => {
    console.error(
        problem instanceof Refused
            ? `The bridge refused (${problem.code}): ${problem.message}`
            : `The bridge can't be reached: ${problem.cause ?? problem}`,
    );
    process.exitCode = 1;
});
