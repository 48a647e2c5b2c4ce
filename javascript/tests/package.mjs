// The package that was built.
import {env} from 'node:process';
import {pathToFileURL} from 'node:url';

export const folder = pathToFileURL(`${env.ZELCC_PACKAGE}/`);
export const {load, Image, ZelError, formats, version} = await import(new URL('index.js', folder));
