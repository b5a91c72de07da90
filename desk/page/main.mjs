import { app } from './app.mjs';
import { call } from './engine_client.mjs';
