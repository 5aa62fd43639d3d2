import { ExtensionContext, workspace } from "vscode";
import { LanguageClient } from "vscode-languageclient/node";

let client: LanguageClient | undefined;

export async function activate(context: ExtensionContext): Promise<void> {
    const program = workspace.getConfiguration("kdx").get<string>("program", "kdx");
    client = new LanguageClient(
        "kdx", "KDX", { command: program, args: ["lsp"] }, { documentSelector: [{ language: "kdx" }] });
    context.subscriptions.push(client);
    await client.start();
}

export function deactivate(): Thenable<void> | undefined {
    return client?.stop();
}
