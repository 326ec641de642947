// Starts the language server of the command optxv, and stops it.

import { ExtensionContext, window, workspace } from "vscode";
import { LanguageClient, LanguageClientOptions, ServerOptions } from "vscode-languageclient/node";

const languages = ["optxv-parameters", "optxv-definition"];

let client: LanguageClient | undefined;

function serverOptions(): ServerOptions {
  const settings = workspace.getConfiguration("optxv");
  const log = settings.get<string>("log", "");
  return {
    command: settings.get<string>("command", "optxv"),
    args: log === "" ? ["lsp"] : ["lsp", "--log", log],
  };
}

const clientOptions: LanguageClientOptions = {
  documentSelector: languages.map((language) => ({ language })),
  synchronize: {
    configurationSection: "optxv",
    fileEvents: workspace.createFileSystemWatcher("**/{optxv.json,*.def,*.opt}"),
  },
};

async function start(): Promise<void> {
  client = new LanguageClient("optxv", "optxv", serverOptions(), clientOptions);
  try {
    await client.start();
  } catch (reason) {
    client = undefined;
    void window.showErrorMessage(
      `The language server of optxv does not start: ${String(reason)}. Is the command installed? ` +
        "The setting optxv.command says where it is.",
    );
  }
}

async function stop(): Promise<void> {
  const running = client;
  client = undefined;
  await running?.stop();
}

export async function activate(context: ExtensionContext): Promise<void> {
  context.subscriptions.push(
    workspace.onDidChangeConfiguration(async (change) => {
      const restart = ["optxv.command", "optxv.log"].some((name) => change.affectsConfiguration(name));
      if (!restart) return;
      await stop();
      await start();
    }),
  );
  await start();
}

export async function deactivate(): Promise<void> {
  await stop();
}
