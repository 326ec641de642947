// Walks the requests that the server says it answers, through a client that others wrote.
//
// usage: node protocol.mjs MODULES FOLDER: the folder with the client's node_modules, and one with solver.def,
// night.opt and optxv.json. The environment names the command. Says what is wrong and exits with 1.

import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const [modules, folder] = process.argv.slice(2);
const lsp = createRequire(join(modules, "package.json"))("vscode-languageserver-protocol/node");

const server = spawn(process.env.OPTXV_COMMAND, ["lsp"], { cwd: folder, stdio: ["pipe", "pipe", "inherit"] });
const client = lsp.createProtocolConnection(
  new lsp.StreamMessageReader(server.stdout),
  new lsp.StreamMessageWriter(server.stdin),
);

const uriOf = (name) => pathToFileURL(join(folder, name)).href;
const night = { uri: uriOf("night.opt") };
const definition = { uri: uriOf("solver.def") };
const texts = { night: readFileSync(join(folder, "night.opt"), "utf8"), definition: readFileSync(join(folder, "solver.def"), "utf8") };

/** The position of a text in another, moved by so many letters. */
function positionOf(text, part, moved = 0) {
  const at = text.indexOf(part);
  assert.notEqual(at, -1, part);
  const lines = text.slice(0, at + moved).split("\n");
  return { line: lines.length - 1, character: lines.at(-1).length };
}

const published = new Map();
client.onNotification(lsp.PublishDiagnosticsNotification.type, (told) => published.set(told.uri, told.diagnostics));
client.onRequest(lsp.RegistrationRequest.type, () => undefined);
client.onRequest(lsp.ConfigurationRequest.type, ({ items }) => items.map(() => ({})));

/** The diagnostics of a document once they are so many. */
async function diagnosed(uri, count) {
  for (let tries = 0; tries < 500; tries++) {
    if (published.get(uri)?.length === count) return published.get(uri);
    await new Promise((soon) => setTimeout(soon, 20));
  }
  assert.fail(`${uri}: not ${count} but ${JSON.stringify(published.get(uri))}`);
}

const whole = (text) => ({ start: { line: 0, character: 0 }, end: { line: text.split("\n").length, character: 0 } });

/** By the name of a capability: what is asked, and what must be true of the answer. */
const requests = {
  hoverProvider: async () => {
    const at = positionOf(texts.night, "time_limit", 2);
    const { contents } = await client.sendRequest(lsp.HoverRequest.type, { textDocument: night, position: at });
    assert.match(contents.value, /Time limit in seconds/);
  },
  completionProvider: async () => {
    const at = positionOf(texts.night, "time_limit", 4);
    const answer = await client.sendRequest(lsp.CompletionRequest.type, { textDocument: night, position: at });
    const items = answer.items ?? answer;
    assert.ok(items.some(({ label }) => label === "time_limit"), JSON.stringify(items));
  },
  definitionProvider: async () => {
    const at = positionOf(texts.night, "time_limit", 2);
    const found = await client.sendRequest(lsp.DefinitionRequest.type, { textDocument: night, position: at });
    const { uri, range } = [found].flat()[0];
    assert.deepEqual([uri, range.start], [definition.uri, positionOf(texts.definition, "time_limit")]);
  },
  referencesProvider: async () => {
    const asked = { textDocument: definition, position: positionOf(texts.definition, "time_limit"), context: { includeDeclaration: true } };
    const found = await client.sendRequest(lsp.ReferencesRequest.type, asked);
    assert.deepEqual(new Set(found.map(({ uri }) => uri)), new Set([night.uri, definition.uri]));
  },
  documentHighlightProvider: async () => {
    const asked = { textDocument: night, position: positionOf(texts.night, "time_limit", 2) };
    const found = await client.sendRequest(lsp.DocumentHighlightRequest.type, asked);
    assert.deepEqual(found.map(({ range }) => range.start), [positionOf(texts.night, "time_limit")]);
  },
  documentSymbolProvider: async () => {
    for (const textDocument of [night, definition]) {
      const found = await client.sendRequest(lsp.DocumentSymbolRequest.type, { textDocument });
      assert.match(JSON.stringify(found), /"time_limit"/);
    }
  },
  codeActionProvider: async () => {
    const asked = { textDocument: night, range: whole(texts.night), context: { diagnostics: published.get(night.uri) } };
    const found = await client.sendRequest(lsp.CodeActionRequest.type, asked);
    assert.match(JSON.stringify(found), /"newText":"method"/);
  },
  renameProvider: async () => {
    const asked = { textDocument: definition, position: positionOf(texts.definition, "time_limit"), newName: "clock_limit" };
    const edit = await client.sendRequest(lsp.RenameRequest.type, asked);
    const changed = Object.keys(edit.changes ?? {}).concat((edit.documentChanges ?? []).map((each) => each.textDocument.uri));
    assert.deepEqual(new Set(changed), new Set([night.uri, definition.uri]));
  },
  documentFormattingProvider: async () => {
    const asked = { textDocument: night, options: { tabSize: 2, insertSpaces: true } };
    const edits = await client.sendRequest(lsp.DocumentFormattingRequest.type, asked);
    assert.ok(edits.length > 0);
  },
  foldingRangeProvider: async () => {
    const found = await client.sendRequest(lsp.FoldingRangeRequest.type, { textDocument: definition });
    assert.ok(found.some(({ startLine }) => startLine === 0), JSON.stringify(found));
  },
  semanticTokensProvider: async (provider) => {
    const { data } = await client.sendRequest(lsp.SemanticTokensRequest.type, { textDocument: night });
    assert.ok(data.length > 0 && data.length % 5 === 0);
    assert.ok(data.every((number, at) => at % 5 !== 3 || number < provider.legend.tokenTypes.length));
  },
  inlayHintProvider: async () => {
    await client.sendRequest(lsp.InlayHintRequest.type, { textDocument: night, range: whole(texts.night) });
  },
};

async function walk() {
  const { capabilities } = await client.sendRequest(lsp.InitializeRequest.type, {
    processId: process.pid,
    rootUri: pathToFileURL(folder).href,
    workspaceFolders: null,
    capabilities: { textDocument: { completion: { completionItem: { snippetSupport: true } } } },
  });
  await client.sendNotification(lsp.InitializedNotification.type, {});
  for (const [textDocument, languageId, text] of [
    [definition, "optxv-definition", texts.definition],
    [night, "optxv-parameters", texts.night],
  ])
    await client.sendNotification(lsp.DidOpenTextDocumentNotification.type, { textDocument: { ...textDocument, languageId, version: 1, text } });

  const [fault] = await diagnosed(night.uri, 1);
  assert.match(fault.message, /Unknown option "metod"/);
  assert.deepEqual(fault.range, { start: positionOf(texts.night, "metod"), end: positionOf(texts.night, "metod", 5) });

  const promised = Object.keys(capabilities).filter((name) => name.endsWith("Provider"));
  assert.deepEqual(new Set(promised), new Set(Object.keys(requests)), "every promise has a request here");
  for (const name of promised) await requests[name](capabilities[name]);

  const wrong = positionOf(texts.night, "metod");
  await client.sendNotification(lsp.DidChangeTextDocumentNotification.type, {
    textDocument: { ...night, version: 2 },
    contentChanges: [{ range: { start: wrong, end: { ...wrong, character: wrong.character + 5 } }, text: "method" }],
  });
  await diagnosed(night.uri, 0);
  await client.sendRequest(lsp.ShutdownRequest.type);
  const ended = new Promise((told) => server.on("exit", told));
  await client.sendNotification(lsp.ExitNotification.type);
  assert.equal(await ended, 0, "the exit status");
}

client.listen();
walk().then(
  () => process.exit(0),
  (reason) => {
    console.error(reason);
    server.kill();
    process.exit(1);
  },
);
