// Reads {"schema": ..., "instances": [...]} from standard input; prints for each instance whether ajv takes it. In its
// strict mode ajv refuses a schema with keywords that it does not know.
import { createRequire } from 'node:module';
import { readFileSync } from 'node:fs';

const Ajv = createRequire(process.argv[2] + '/')('ajv/dist/2020.js');
const { schema, instances } = JSON.parse(readFileSync(0, 'utf8'));
const validate = new Ajv({ strict: true }).compile(schema);
console.log(JSON.stringify(instances.map((each) => validate(each))));
