/** What the package refuses. `function` and `argument` name what it is about; `status` and `statusName` are the library's. */
export class ZelError extends Error {
  constructor(text, about = {}) {
    const where = [about.function, about.argument].filter(Boolean).join(': ');
    super(where ? `${where}: ${text}` : text);
    this.name = 'ZelError';
    this.function = about.function;
    this.argument = about.argument;
    this.status = about.status;
    this.statusName = about.statusName;
  }
}
