declare module "*.xml" {
  const text: string;
  export default text;
}
declare module "*.css";
declare module "bundled:*" {
  const script: string;
  export default script;
}
